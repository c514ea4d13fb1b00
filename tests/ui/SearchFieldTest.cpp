#include "platform/appkit/SearchField.h"
#include "ui/ContentWindow.h"

namespace {

using appkit::SearchField;

/// Notes the field's text at each action.
struct Searcher {
    void search(SearchField& field) { searched.push_back(field.stringValue()); }

    std::vector<std::string> searched;
};

/// Takes the command for itself.
struct Taker : appkit::TextFieldDelegate {
    bool controlDoCommandBySelector(appkit::TextField& /*field*/, std::string_view selector) override
    {
        return selector == command;
    }

    std::string command;
};

class SearchFieldTest : public ContentWindowTest {
protected:
    SearchFieldTest()
    {
        field->setPlaceholderString("Search bookmarks...");
        field->setAction({ "search:", std::weak_ptr(searcher), &Searcher::search });
    }

    std::shared_ptr<Searcher> searcher = std::make_shared<Searcher>();
    std::shared_ptr<SearchField> field = std::make_shared<SearchField>();
};

TEST_F(SearchFieldTest, SettingTheTextSendsNothing)
{
    field->setStringValue("you");

    EXPECT_EQ(field->stringValue(), "you");
    EXPECT_EQ(field->placeholderString(), "Search bookmarks...");
    EXPECT_THAT(searcher->searched, testing::IsEmpty());
}

TEST_F(SearchFieldTest, EscapeClearsItAndSendsTheAction)
{
    field->setStringValue("you");

    EXPECT_TRUE(field->doCommandBySelector("cancelOperation:"));

    EXPECT_EQ(field->stringValue(), "");
    EXPECT_THAT(searcher->searched, testing::ElementsAre(""));
}

TEST_F(SearchFieldTest, EscapeInAnEmptyOneIsNotForTheField)
{
    EXPECT_FALSE(field->doCommandBySelector("cancelOperation:"));

    EXPECT_THAT(searcher->searched, testing::IsEmpty());
}

TEST_F(SearchFieldTest, TheDelegateComesFirst)
{
    const auto taker = std::make_shared<Taker>();
    taker->command = "cancelOperation:";
    field->setDelegate(taker);
    field->setStringValue("you");

    EXPECT_TRUE(field->doCommandBySelector("cancelOperation:"));

    EXPECT_EQ(field->stringValue(), "you");
}

TEST_F(SearchFieldTest, LeavingItSendsNothing)
{
    const auto other = std::make_shared<appkit::TextField>();
    content().addSubview(other);
    showAtTop(field);
    field->selectText();
    field->setStringValue("you");

    other->selectText();
    perchly::test::handlePendingEvents();

    EXPECT_THAT(searcher->searched, testing::IsEmpty());
}

} // namespace
