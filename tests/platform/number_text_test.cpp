#include "platform/number_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>

namespace orvane {
namespace {

constexpr double kUntouched = -77.25;

double Read(std::string_view text) {
    double value = kUntouched;
    const bool isNumber = ReadNumber(text, value);
    EXPECT_EQ(isNumber, value != kUntouched) << text;
    return value;
}

std::string Text(double value) {
    std::string text;
    EXPECT_TRUE(NumberText(value, text));
    return text;
}

TEST(ReadNumberTest, TakesSignPointAndExponent) {
    EXPECT_EQ(Read("12"), 12);
    EXPECT_EQ(Read("-12.5"), -12.5);
    EXPECT_EQ(Read("+0.25"), 0.25);
    EXPECT_EQ(Read(".5"), 0.5);
    EXPECT_EQ(Read("5."), 5);
    EXPECT_EQ(Read("1e3"), 1000);
    EXPECT_EQ(Read("1.5E-2"), 0.015);
}

TEST(ReadNumberTest, BlanksAroundTheNumberDoNotCount) { EXPECT_EQ(Read(" \t7 "), 7); }

TEST(ReadNumberTest, TheWholeTextMustBeTheNumber) {
    for (const char* text : {"",    " ",     "+",    "-",    ".",   "e5",   "12a", "1 2",      "--1", "+-1",
                             "1,5", "1,000", "0x10", "&H10", "inf", "-inf", "nan", "infinity", "1e",  "\xEF\xBC\x91"}) {
        EXPECT_EQ(Read(text), kUntouched) << text;
    }
    EXPECT_EQ(Read(std::string_view("1\0", 2)), kUntouched);
}

TEST(ReadNumberTest, AValueBeyondADoubleIsNone) { EXPECT_EQ(Read("1e999"), kUntouched); }

TEST(ReadNumberTest, TheLocaleOfTheProcessDoesNotMatter) {
    // A comma is the point of these locales, where the machine has one of them.
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
    EXPECT_EQ(Read("1.5"), 1.5);
    EXPECT_EQ(Read("1,5"), kUntouched);
    EXPECT_EQ(Text(1.5), "1.5");
    std::setlocale(LC_ALL, "C");
}

TEST(NumberTextTest, WholeNumbersHaveNoPoint) {
    EXPECT_EQ(Text(0), "0");
    EXPECT_EQ(Text(-0.0), "0");
    EXPECT_EQ(Text(5), "5");
    EXPECT_EQ(Text(-100000), "-100000");
    EXPECT_EQ(Text(123456789012345), "123456789012345");
}

TEST(NumberTextTest, FractionsHaveAsManyDigitsAsTheyNeed) {
    EXPECT_EQ(Text(0.1), "0.1");
    EXPECT_EQ(Text(-35.5), "-35.5");
    EXPECT_EQ(Text(1234.5678), "1234.5678");
    EXPECT_EQ(Text(0.0001), "0.0001");
    EXPECT_EQ(Text(0.1 + 0.2), "0.30000000000000004");
}

TEST(NumberTextTest, VeryLargeAndVerySmallOnesHaveAnExponent) {
    EXPECT_EQ(Text(1e14), "100000000000000");
    EXPECT_EQ(Text(1e15), "1E+15");
    EXPECT_EQ(Text(1.25e21), "1.25E+21");
    EXPECT_EQ(Text(0.00001), "1E-05");
    EXPECT_EQ(Text(-2.5e-300), "-2.5E-300");
}

TEST(NumberTextTest, AFloatIsShortForAFloat) {
    std::string text;
    ASSERT_TRUE(NumberText(0.1f, text));
    EXPECT_EQ(text, "0.1");
}

TEST(NumberTextTest, WhatIsNoNumberHasNoText) {
    std::string text = "kept";
    EXPECT_FALSE(NumberText(std::nan(""), text));
    EXPECT_FALSE(NumberText(-std::numeric_limits<double>::infinity(), text));
    EXPECT_FALSE(NumberText(std::numeric_limits<float>::infinity(), text));
    EXPECT_EQ(text, "kept");
}

TEST(NumberTextTest, EveryTextReadsBackAsTheSameValue) {
    std::mt19937_64 random(20240612);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    for (int power = -300; power <= 300; ++power) {
        const double value = mantissa(random) * std::pow(10.0, power);
        EXPECT_EQ(Read(Text(value)), value);
    }
    EXPECT_EQ(Read(Text(DBL_MAX)), DBL_MAX);
    EXPECT_EQ(Read(Text(DBL_MIN)), DBL_MIN);
}

}  // namespace
}  // namespace orvane
