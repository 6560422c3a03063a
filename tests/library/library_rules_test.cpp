#include "library/library_rules.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

TEST(AdaptiveColumnCount, AnotherColumnAppearsOnceItFitsAtTwoHundredWithItsGap) {
    EXPECT_EQ(adaptiveColumnCount(0), 1);
    EXPECT_EQ(adaptiveColumnCount(150), 1);
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

TEST_F(SpliceToMatch, KeepsCommonEndsAndReplacesOnlyTheMiddle) {
    EXPECT_TRUE(spliceToMatch(ids({0, 1, 2}), ids({0, 1, 2})).empty());
    // A new file at the front.
    EXPECT_EQ(spliceToMatch(ids({0, 1, 2}), ids({3, 0, 1, 2})), (ListSplice{0, 0, 1}));
    // One removed from the middle.
    EXPECT_EQ(spliceToMatch(ids({0, 1, 2, 3}), ids({0, 2, 3})), (ListSplice{1, 1, 0}));
    // A folder rescanned: its records come back under new ids.
    EXPECT_EQ(spliceToMatch(ids({0, 1, 2, 3}), ids({0, 4, 5, 3})), (ListSplice{1, 2, 2}));
    // Everything replaced, or emptied.
    EXPECT_EQ(spliceToMatch(ids({0, 1}), ids({2, 3, 4})), (ListSplice{0, 2, 3}));
    EXPECT_EQ(spliceToMatch(ids({0, 1}), {}), (ListSplice{0, 2, 0}));
    EXPECT_EQ(spliceToMatch({}, ids({0, 1})), (ListSplice{0, 0, 2}));
}

TEST_F(SpliceToMatch, ApplyingTheSpliceGivesTheWantedList) {
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

} // namespace
} // namespace kelmo
