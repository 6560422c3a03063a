#include "library/artifact_text.h"
#include "library/library_rules.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

namespace kelmo {
namespace {

using namespace std::chrono;

TEST(AdaptiveColumnCount, AnotherColumnAppearsOnceItFitsAtTwoHundredWithItsGap) {
    EXPECT_EQ(adaptiveColumnCount(0), 1);
    EXPECT_EQ(adaptiveColumnCount(427), 1);
    EXPECT_EQ(adaptiveColumnCount(428), 2);
    EXPECT_EQ(adaptiveColumnCount(5 * 214 - 1), 4);
    EXPECT_EQ(adaptiveColumnCount(5 * 214), 5);
}

class SpliceToMatch : public ::testing::Test {
protected:
    std::vector<Uuid> ids(std::initializer_list<int> picks) const {
        std::vector<Uuid> chosen;
        for (int pick : picks)
            chosen.push_back(pool.at(static_cast<std::size_t>(pick)));
        return chosen;
    }

    std::vector<Uuid> pool{Uuid::random(), Uuid::random(), Uuid::random(),
                           Uuid::random(), Uuid::random(), Uuid::random()};
};

TEST_F(SpliceToMatch, KeepsCommonEndsAndReplacesOnlyTheMiddleToGiveTheWantedList) {
    EXPECT_TRUE(spliceToMatch(ids({0, 1, 2}), ids({0, 1, 2})).empty());
    EXPECT_EQ(spliceToMatch(ids({0, 1, 2}), ids({3, 0, 1, 2})), (ListSplice{0, 0, 1}));
    EXPECT_EQ(spliceToMatch(ids({0, 1, 2, 3}), ids({0, 2, 3})), (ListSplice{1, 1, 0}));
    EXPECT_EQ(spliceToMatch(ids({0, 1, 2, 3}), ids({0, 4, 5, 3})), (ListSplice{1, 2, 2}));
    EXPECT_EQ(spliceToMatch(ids({0, 1}), {}), (ListSplice{0, 2, 0}));
    EXPECT_EQ(spliceToMatch({}, ids({0, 1})), (ListSplice{0, 0, 2}));

    // Applied, the splice gives the wanted list, repeats and reversals included.
    const std::vector<std::pair<std::vector<Uuid>, std::vector<Uuid>>> cases{
        {ids({0, 0}), ids({0, 0, 0})},
        {ids({0, 1, 0}), ids({0})},
        {ids({1, 2, 1, 2}), ids({1, 2})},
        {ids({5, 4, 3}), ids({3, 4, 5})},
    };
    for (const auto& [shown, wanted] : cases) {
        const ListSplice change = spliceToMatch(shown, wanted);
        std::vector<Uuid> result{shown.begin(), shown.begin() + change.position};
        result.insert(result.end(), wanted.begin() + change.position,
                      wanted.begin() + change.position + change.added);
        result.insert(result.end(), shown.begin() + change.position + change.removed, shown.end());
        EXPECT_EQ(result, wanted);
    }
}

TEST(FileSizeString, BytesBelowOneKilobyteThenKilobytesWithoutALargerUnitAndZeroWhenGone) {
    EXPECT_EQ(fileSizeString(1023), "1023 B");
    EXPECT_EQ(fileSizeString(1536), "1.5 KB");
    EXPECT_EQ(fileSizeString(10 * 1024 * 1024), "10240.0 KB");
    EXPECT_EQ(fileSizeString(fileSizeOrZero("/no/such/page.html")), "0 B");
}

TEST(RelativeDateString, TheLargestDifferingUnitInShortStyleAndTheUsersLocale) {
    const icu::Locale saved = icu::Locale::getDefault();
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale::getUS(), status);
    const auto now = Clock::now();
    EXPECT_EQ(relativeDateString(now - minutes{3}, now), "3 min. ago");
    EXPECT_EQ(relativeDateString(now - hours{49}, now), "2 days ago");
    EXPECT_EQ(relativeDateString(now - hours{24 * 800}, now), "2 yr. ago");
    EXPECT_EQ(relativeDateString(now + hours{2} + seconds{1}, now), "in 2 hr.");
    EXPECT_EQ(relativeDateString(now, now), "in 0 sec.");

    icu::Locale::setDefault(icu::Locale::getGermany(), status);
    EXPECT_EQ(relativeDateString(now - hours{3}, now), "vor 3 Std.");
    icu::Locale::setDefault(saved, status);
}

} // namespace
} // namespace kelmo
