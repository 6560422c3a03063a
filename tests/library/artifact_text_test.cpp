#include "library/artifact_text.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

namespace kelmo {
namespace {

using namespace std::chrono;

TEST(FileSizeString, BytesBelowOneKilobyteThenKilobytesWithoutALargerUnit) {
    EXPECT_EQ(fileSizeString(0), "0 B");
    EXPECT_EQ(fileSizeString(512), "512 B");
    EXPECT_EQ(fileSizeString(1023), "1023 B");
    EXPECT_EQ(fileSizeString(1024), "1.0 KB");
    EXPECT_EQ(fileSizeString(1536), "1.5 KB");
    EXPECT_EQ(fileSizeString(10 * 1024 * 1024), "10240.0 KB");
}

TEST(FileSizeString, ReadsTheFileAndGivesZeroWhenItIsGone) {
    testing::TemporaryDirectory dir;
    testing::writeFile(dir / "page.html", std::string(1536, 'x'));
    EXPECT_EQ(fileSizeString(fileSizeOrZero(dir / "page.html")), "1.5 KB");
    std::filesystem::remove(dir / "page.html");
    EXPECT_EQ(fileSizeString(fileSizeOrZero(dir / "page.html")), "0 B");
}

class RelativeDateTest : public ::testing::Test {
protected:
    void SetUp() override {
        UErrorCode status = U_ZERO_ERROR;
        saved_ = icu::Locale::getDefault();
        icu::Locale::setDefault(icu::Locale::getUS(), status);
    }
    void TearDown() override {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(saved_, status);
    }
    icu::Locale saved_;
};

TEST_F(RelativeDateTest, TheLargestDifferingUnitNamesThePastInShortStyle) {
    const auto now = Clock::now();
    EXPECT_EQ(relativeDateString(now - seconds{5}, now), "5 sec. ago");
    EXPECT_EQ(relativeDateString(now - minutes{3}, now), "3 min. ago");
    EXPECT_EQ(relativeDateString(now - hours{3}, now), "3 hr. ago");
    EXPECT_EQ(relativeDateString(now - hours{49}, now), "2 days ago");
    EXPECT_EQ(relativeDateString(now - hours{24 * 9}, now), "1 wk. ago");
    EXPECT_EQ(relativeDateString(now - hours{24 * 800}, now), "2 yr. ago");
}

TEST_F(RelativeDateTest, FutureAndPresentMomentsReadForwards) {
    const auto now = Clock::now();
    EXPECT_EQ(relativeDateString(now + hours{2} + seconds{1}, now), "in 2 hr.");
    EXPECT_EQ(relativeDateString(now, now), "in 0 sec.");
}

TEST_F(RelativeDateTest, FollowsTheUsersLocale) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale::getGermany(), status);
    const auto now = Clock::now();
    EXPECT_EQ(relativeDateString(now - hours{3}, now), "vor 3 Std.");
}

TEST(FileCountString, SingularOnlyForExactlyOne) {
    EXPECT_EQ(fileCountString(0), "0 files");
    EXPECT_EQ(fileCountString(1), "1 file");
    EXPECT_EQ(fileCountString(2), "2 files");
    EXPECT_EQ(fileCountString(10000), "10000 files");
}

} // namespace
} // namespace kelmo
