#pragma once

#include "platform/linux/statusarea/ExportedObject.h"
#include "platform/linux/statusarea/MenuTree.h"

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace desktop {

/// A com.canonical.dbusmenu object: shows a menu to the hosts of status items.
///
/// Hosts differ in when they ask. Some fetch a menu long before it is opened and believe only the signals; some ask at
/// the moment of opening and believe only the reply; all of them are served by telling every change at once and by
/// answering "about to show" with the truth, reply first, signal after.
class MenuServer : public std::enable_shared_from_this<MenuServer> {
public:
    struct Source {
        /// The rows as they should be now. The menu is never shown without any. Not asked for before a host does.
        std::function<std::vector<MenuRow>()> rows;
        /// The host has its answer.
        std::function<void()> hasOpened;
    };

    [[nodiscard]] static std::shared_ptr<MenuServer> create(
        GDBusConnection* connection, std::string path, Source source);

    /// Tells the hosts what has changed, in a later turn of the main loop: many changes make one message.
    void rowsChanged();

private:
    explicit MenuServer(Source source)
        : source_(std::move(source))
    {
    }

    using Ids = std::vector<std::int32_t>;

    void handle(const BusCall& call);
    void getLayout(const BusCall& call);
    void getGroupProperties(const BusCall& call);
    void getProperty(const BusCall& call);
    void event(const BusCall& call);
    void eventGroup(const BusCall& call);
    void aboutToShow(const BusCall& call);
    void aboutToShowGroup(const BusCall& call);

    bool perform(std::int32_t id, std::string_view event);
    void open(bool isRoot, const std::function<void(bool changed)>& reply);
    void prepare();
    MenuChange refresh();
    void announceLayout() const;
    void announceProperties(const std::vector<MenuRowChange>& changes);

    GVariant* layout(std::int32_t id, const MenuTree::Node& node, int depth, const std::set<std::string>& names);
    GVariant* properties(const MenuRow& row, const std::set<std::string>& names);
    GVariant* icon(const std::shared_ptr<Picture>& picture);

    Source source_;
    MenuTree tree_;
    bool isPrepared_ = false;
    /// A host has said that the menu opens, and nothing has been chosen since.
    bool isOpen_ = false;
    std::set<const Picture*> beingDrawn_;
    SourceHandle pendingChange_;
    std::optional<ExportedObject> object_;
};

} // namespace desktop
