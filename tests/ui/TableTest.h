#pragma once

#include "platform/appkit/Button.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/ScrollView.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/TextField.h"
#include "platform/appkit/ViewController.h"
#include "platform/appkit/Window.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Numbered rows of a text and a button. Takes down what it is asked for and what is done with it.
class NumberedRows : public appkit::TableViewDataSource,
                     public appkit::TableViewDelegate,
                     public std::enable_shared_from_this<NumberedRows> {
public:
    std::size_t numberOfRows(const appkit::TableView& /*table*/) override { return count; }
    double heightOfRow(const appkit::TableView& /*table*/, std::size_t /*row*/) override { return height; }

    std::shared_ptr<appkit::View> viewForRow(
        appkit::TableView& table, const appkit::TableColumn& column, std::size_t row) override
    {
        ++asked;
        if (whenAsked)
            whenAsked();
        if (column.identifier == "button")
            return buttonCell(table);
        auto cell = std::dynamic_pointer_cast<appkit::TableCellView>(table.makeView("text"));
        if (!cell)
            cell = makeTextCell();
        cell->textField()->setStringValue(prefix + std::to_string(row));
        return cell;
    }

    void press(appkit::Button& button)
    {
        pressedRows.push_back(shownBy.lock()->rowForView(button));
        if (whenPressed)
            whenPressed();
    }

    void doubleClick(appkit::TableView& table) { doubleClickedRows.push_back(table.selectedRow()); }

    std::weak_ptr<appkit::TableView> shownBy;
    std::size_t count = 10000;
    double height = 32;
    std::string prefix = "Row ";
    /// Each fill of a row gets a new button, as if it were another one.
    bool replacesButtons = false;
    std::function<void()> whenAsked;
    std::function<void()> whenPressed;

    int asked = 0;
    int made = 0;
    std::vector<std::optional<std::size_t>> pressedRows;
    std::vector<std::optional<std::size_t>> doubleClickedRows;

private:
    std::shared_ptr<appkit::View> makeCell(const std::shared_ptr<appkit::View>& cell, std::string_view identifier)
    {
        ++made;
        cell->setIdentifier(identifier);
        return cell;
    }

    std::shared_ptr<appkit::TableCellView> makeTextCell()
    {
        auto cell = std::make_shared<appkit::TableCellView>();
        makeCell(cell, "text");
        auto label = appkit::TextField::label("");
        label->setLineBreakMode(appkit::LineBreakMode::ByTruncatingTail);
        cell->addSubview(label);
        appkit::activateConstraints({ label->leadingAnchor().equalTo(cell->leadingAnchor(), 5),
            label->trailingAnchor().equalTo(cell->trailingAnchor(), -5),
            label->centerYAnchor().equalTo(cell->centerYAnchor()) });
        cell->setTextField(std::move(label));
        return cell;
    }

    std::shared_ptr<appkit::View> buttonCell(appkit::TableView& table)
    {
        auto cell = table.makeView("button");
        if (!cell)
            cell = makeCell(std::make_shared<appkit::View>(), "button");
        if (cell->subviews().empty() || replacesButtons)
            addButton(*cell);
        return cell;
    }

    void addButton(appkit::View& cell)
    {
        while (!cell.subviews().empty())
            cell.subviews().back()->removeFromSuperview();
        auto button = appkit::Button::withTitle("Go", appkit::Action("press:", weak_from_this(), &NumberedRows::press));
        button->setBezelStyle(appkit::BezelStyle::Recessed);
        cell.addSubview(button);
        appkit::activateConstraints({ button->leadingAnchor().equalTo(cell.leadingAnchor(), 2),
            button->centerYAnchor().equalTo(cell.centerYAnchor()), button->widthAnchor().equalToConstant(60) });
    }
};

/// A table of numbered rows in a window of 600 by 320 points.
class TableTest : public testing::Test {
protected:
    TableTest()
    {
        rows->shownBy = table;
        table->setDataSource(rows);
        table->setDelegate(rows);
        table->setDoubleAction({ "doubleClick:", std::weak_ptr<NumberedRows>(rows), &NumberedRows::doubleClick });
        table->addTableColumn({ "text", "Text", 300 });
        table->addTableColumn({ "button", "Button", 100 });
        scrollView->setHasVerticalScroller(true);
        scrollView->setAutohidesScrollers(true);
        scrollView->setDocumentView(table);
        window->setContentViewController(content);
    }

    struct Content : appkit::ViewController {
        explicit Content(std::shared_ptr<appkit::View> shown)
            : shown_(std::move(shown))
        {
        }
        void loadView() override
        {
            auto root = std::make_shared<appkit::View>(foundation::Rect { {}, { 600, 320 } });
            root->addSubview(shown_);
            appkit::activateConstraints({ shown_->leadingAnchor().equalTo(root->leadingAnchor()),
                shown_->trailingAnchor().equalTo(root->trailingAnchor()),
                shown_->topAnchor().equalTo(root->topAnchor()), shown_->bottomAnchor().equalTo(root->bottomAnchor()) });
            setView(root);
        }

    private:
        std::shared_ptr<appkit::View> shown_;
    };

    void show()
    {
        table->reloadData();
        window->makeKeyAndOrderFront();
        ASSERT_TRUE(isShown(0) && perchly::test::waitUntil([this] { return window->isKeyWindow(); }));
    }

    /// Whether the row comes into sight.
    [[nodiscard]] bool isShown(std::size_t row) const
    {
        return perchly::test::waitUntil([&] { return viewOf(row) != nullptr; });
    }
    [[nodiscard]] bool isOutOfSight(std::size_t row) const
    {
        return perchly::test::waitUntil([&] { return viewOf(row) == nullptr; });
    }

    [[nodiscard]] std::shared_ptr<appkit::View> viewOf(std::size_t row) const { return table->viewAt(0, row, false); }

    [[nodiscard]] std::string textOf(std::size_t row) const
    {
        const auto cell = std::dynamic_pointer_cast<appkit::TableCellView>(viewOf(row));
        return cell ? cell->textField()->stringValue() : "";
    }

    [[nodiscard]] std::shared_ptr<appkit::Button> buttonOf(std::size_t row) const
    {
        return std::dynamic_pointer_cast<appkit::Button>(table->viewAt(1, row, true)->subviews().front());
    }

    std::shared_ptr<NumberedRows> rows = std::make_shared<NumberedRows>();
    std::shared_ptr<appkit::TableView> table = std::make_shared<appkit::TableView>();
    std::shared_ptr<appkit::ScrollView> scrollView = std::make_shared<appkit::ScrollView>();
    std::shared_ptr<Content> content = std::make_shared<Content>(scrollView);
    std::shared_ptr<appkit::Window> window = appkit::Window::create({ { 100, 200 }, { 600, 320 } },
        appkit::WindowStyleMask::Titled | appkit::WindowStyleMask::Closable | appkit::WindowStyleMask::Resizable);
};
