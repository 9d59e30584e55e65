#pragma once

#include <QDebug>
#include <QString>

// What a function requires of its arguments and ensures of its result,
// checked in debug builds and in the sanitizer run (BELLAVENOR_CHECK_CONTRACTS):
// a broken promise ends the program with the condition and the offending
// values, e.g.
//   BELLAVENOR_CHECK(a.size() == b.size(), "sizes " << a.size() << " and " << b.size());
// Other builds do not evaluate either argument.
[[noreturn]] void contractBroken(const char* condition, const char* function, const QString& values);

#ifdef BELLAVENOR_CHECK_CONTRACTS
#define BELLAVENOR_CHECK(condition, values)                                                                            \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            QString text;                                                                                              \
            QDebug(&text).nospace().noquote() << values;                                                               \
            contractBroken(#condition, static_cast<const char*>(__func__), text);                                      \
        }                                                                                                              \
    } while (false)
#else
#define BELLAVENOR_CHECK(condition, values)                                                                            \
    do {                                                                                                               \
    } while (false)
#endif
