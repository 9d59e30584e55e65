#pragma once

#include "LocalisedLabels.h"

#include <QCoreApplication>

// The window's tests read the English labels, whichever runs first.
inline void installEnglishLabelsOnce()
{
    static const bool installed = [] {
        LocalisedLabels::installTranslator(qApp);
        return true;
    }();
    (void)installed;
}
