#include "BookmarkJson.h"
#include "JsonCases.h"
#include "bookmarks/BookmarkCollection.h"

#include <gtest/gtest.h>
#include <simdjson.h>

namespace perchly::tests {

namespace {

/// Malformed, as against well-formed JSON that is no document of ours.
bool isMalformed(const std::string& document)
{
    const auto decoded = BookmarkCollection::decode(document);
    return !decoded && decoded.error().localizedDescription.starts_with("Malformed JSON");
}

void expectWellFormed(const JsonCase& each)
{
    EXPECT_FALSE(isMalformed(each.text)) << each.name;
    EXPECT_TRUE(BookmarkCollection::decode(R"({"ignored":)" + each.text + R"(,"bookmarks":[]})")) << each.name;
    EXPECT_TRUE(BookmarkCollection::decode(BookmarkJson::complete().with("ignored", each.text).document()))
        << each.name;
}

void expectMalformed(const JsonCase& each)
{
    EXPECT_TRUE(isMalformed(each.text)) << each.name;
    EXPECT_TRUE(isMalformed(R"({"ignored":)" + each.text + R"(,"bookmarks":[]})")) << each.name;
    EXPECT_TRUE(isMalformed(BookmarkJson::complete().with("ignored", each.text).document())) << each.name;
}

} // namespace

/// On every instruction set that the parser brings code for and this machine has.
class JsonConformanceTest : public testing::TestWithParam<const simdjson::implementation*> {
protected:
    void SetUp() override
    {
        if (!GetParam()->supported_by_runtime_system())
            GTEST_SKIP() << "this machine lacks " << GetParam()->description();
        simdjson::get_active_implementation() = GetParam();
    }

    void TearDown() override { simdjson::get_active_implementation() = former_; }

private:
    const simdjson::implementation* former_ = simdjson::get_active_implementation();
};

TEST_P(JsonConformanceTest, AcceptsWhatTheGrammarDerives)
{
    for (const auto& each : wellFormedCases())
        expectWellFormed(each);
}

TEST_P(JsonConformanceTest, RefusesWhatItDoesNotDerive)
{
    for (const auto& each : malformedCases())
        expectMalformed(each);
}

TEST_P(JsonConformanceTest, AcceptsNumbersThatAreTooSmall)
{
    for (const auto& each : acceptedChoices())
        expectWellFormed(each);
}

TEST_P(JsonConformanceTest, RefusesWhatNoValueCanHold)
{
    for (const auto& each : refusedChoices())
        expectMalformed(each);
}

TEST_P(JsonConformanceTest, AcceptsAByteOrderMarkInFront)
{
    const std::string mark = "\xEF\xBB\xBF";

    EXPECT_TRUE(BookmarkCollection::decode(mark + R"({"bookmarks":[]})"));
    EXPECT_TRUE(BookmarkCollection::decode(mark + R"( {"a":123456789012345678901,"bookmarks":[]})"));
    EXPECT_TRUE(isMalformed(mark));
    EXPECT_TRUE(isMalformed(" " + mark + R"({"bookmarks":[]})"));
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, JsonConformanceTest,
    testing::ValuesIn(
        simdjson::get_available_implementations().begin(), simdjson::get_available_implementations().end()),
    [](const auto& each) { return each.param->name(); });

} // namespace perchly::tests
