#include "BookmarkCollectionProperties.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace perchly::tests {

TEST(FuzzCorpusTest, EveryPastFindHoldsTheProperties)
{
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PERCHLY_FUZZ_CORPUS)) {
        SCOPED_TRACE(entry.path().filename());
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string bytes { std::istreambuf_iterator<char>(stream), {} };
        fuzz::checkBookmarkDocument(bytes); // ends the process where one does not hold
        ++count;
    }
    EXPECT_GE(count, 19u);
}

} // namespace perchly::tests
