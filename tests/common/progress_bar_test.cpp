#include "hosts/common/progress_bar.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace orvane {
namespace {

TEST(ProgressBar, OffATerminalOnePlainLineIsAll) {
    std::ostringstream out;
    {
        ProgressBar bar(out, false, "importing a.shp");
        for (int i = 0; i <= 100; ++i) bar.Show(i / 100.0);
        bar.Clear();
    }
    EXPECT_EQ(out.str(), "importing a.shp\n");
}

TEST(ProgressBar, OnATerminalTheLineIsWrittenInPlaceAndOnlyWhenThePercentageChanges) {
    std::ostringstream out;
    ProgressBar bar(out, true, "importing");
    bar.Show(0.5);
    EXPECT_EQ(out.str(), "\rimporting [" + std::string(15, '#') + std::string(15, '.') + "] 50 %\x1b[K");
    out.str("");
    bar.Show(0.501);
    EXPECT_EQ(out.str(), "");
    bar.Show(1);
    EXPECT_EQ(out.str(), "\rimporting [" + std::string(30, '#') + "] 100 %\x1b[K");
    out.str("");
    bar.Clear();
    EXPECT_EQ(out.str(), "\r\x1b[K");
}

TEST(ProgressBar, NothingIsLeftOnTheTerminalAtTheEnd) {
    std::ostringstream out;
    { ProgressBar bar(out, true, "x"); }
    EXPECT_EQ(out.str(), "") << "nothing was shown";
    {
        ProgressBar bar(out, true, "x");
        bar.Show(0);
        out.str("");
    }
    EXPECT_EQ(out.str(), "\r\x1b[K");
}

TEST(ProgressBar, FractionsOutOfRangeAreHeldToIt) {
    std::ostringstream out;
    ProgressBar bar(out, true, "x");
    bar.Show(7);
    EXPECT_NE(out.str().find("] 100 %"), std::string::npos);
    bar.Show(-7);
    EXPECT_NE(out.str().find("] 0 %"), std::string::npos);
    bar.Show(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(out.str().find("nan"), std::string::npos);
}

}  // namespace
}  // namespace orvane
