#pragma once

#include "OpenedPhoto.h"

#include <gtest/gtest.h>

// The test portrait opened and analysed once per test program.
inline const OpenedPhoto& portrait()
{
    static const OpenResult opened = openAndAnalyse(QString(BELLAVENOR_TEST_DATA) + "/portrait.png");
    EXPECT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
    return opened.photo;
}
