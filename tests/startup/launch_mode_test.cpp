#include "app/launch_mode.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Case {
    QString text;
    int mode; ///< −1: none
};

int number(const std::optional<LaunchMode> &mode) {
    return mode ? int(*mode) : -1;
}

} // namespace

TEST(LaunchMode, IsTheLeadingNumberOfTheCommandLineRoundedDown) {
    for (const Case &c : {
             Case{u"1"_s, 1},
             Case{u"0"_s, 0},
             Case{u" 1"_s, 1},
             Case{u"1.9"_s, 1},
             Case{u"0.99"_s, 0},
             Case{u".5"_s, 0},
             Case{u"+1"_s, 1},
             Case{u"01"_s, 1},
             Case{u"1 rest"_s, 1},
             Case{u"1x"_s, 1},
             Case{u"1e0"_s, 1},
             Case{u"1e"_s, 1},
             Case{u"abc"_s, 0},
             Case{u" "_s, 0},
             Case{u"-"_s, 0},
             Case{u"/1"_s, 0},
             Case{u"2"_s, -1},
             Case{u"3"_s, -1},
             Case{u"-1"_s, -1},
             Case{u"-0.5"_s, -1},
             Case{u"10"_s, -1},
             Case{u"4294967297"_s, -1},
             Case{u"18446744073709551617"_s, -1},
             Case{u"1e999"_s, -1},
             Case{u"-1e999"_s, -1},
         })
        EXPECT_EQ(number(modeFromCommandLine(c.text)), c.mode) << c.text.toStdString();
}

TEST(LaunchMode, IsANumberAsAWholeWhenAPersonTypesIt) {
    for (const Case &c : {
             Case{u"1"_s, 1},
             Case{u"0"_s, 0},
             Case{u" 1 "_s, 1},
             Case{u"1.9"_s, 1},
             Case{u"１"_s, 1},
             Case{u"　０．５　"_s, 0},
             Case{u""_s, -1},
             Case{QString(), -1},
             Case{u"abc"_s, -1},
             Case{u"1x"_s, -1},
             Case{u"1 1"_s, -1},
             Case{u"2"_s, -1},
             Case{u"-1"_s, -1},
             Case{u"1e999"_s, -1},
         })
        EXPECT_EQ(number(modeFromAnswer(c.text)), c.mode) << c.text.toStdString();
}
