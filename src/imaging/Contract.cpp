#include "Contract.h"

#include <cstdio>
#include <cstdlib>

void contractBroken(const char* condition, const char* function, const QString& values)
{
    std::fprintf(stderr, "Broken contract in %s: %s (%s)\n", function, condition, qPrintable(values));
    std::abort();
}
