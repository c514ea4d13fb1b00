#pragma once

#include "TestBus.h"

#include <mutex>
#include <string>
#include <vector>

/// A row as a host has learnt it.
struct KnownRow {
    std::int32_t id = 0;
    std::string label;
};

/// What all hosts of menus have: a connection, the rows that they would show, a record of what has arrived.
class FakeHost {
public:
    FakeHost(std::string service, std::string path);
    virtual ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    /// The user opens the menu. What is then on the screen are labels().
    virtual void openMenu() = 0;

    [[nodiscard]] std::vector<std::string> labels() const;
    [[nodiscard]] std::int32_t idOf(const std::string& label) const;

    /// "reply" for an answer to AboutToShow(Group), else the signal's name, in the order of arrival on the wire.
    [[nodiscard]] std::vector<std::string> traffic() const;

    desktop::VariantPointer call(const char* method, GVariant* parameters) const;

    /// Waits until the program has handled what this host sent, and the host what the program sent until then.
    void settle() const;

protected:
    /// GetLayout, the labels taken from what the reply carries.
    void fetchLayout(int depth, const std::vector<const char*>& names);
    void fetchLabels();
    virtual void layoutUpdated() = 0;

    testbus::Call target_;
    testbus::Connection connection_;
    std::vector<KnownRow> rows_;

private:
    static GDBusMessage* record(GDBusConnection* connection, GDBusMessage* message, gboolean incoming, gpointer self);

    guint subscription_ = 0;
    guint filter_ = 0;
    mutable std::mutex mutex_; // the record is written on the connection's own thread
    std::vector<std::string> traffic_;
    std::vector<guint32> pendingOpenings_;
};

/// Xfce, Waybar, Cinnamon: say that the menu opens and read no reply; believe the signal alone.
class GtkHost : public FakeHost {
public:
    GtkHost(std::string service, std::string path);
    void openMenu() override;

private:
    void layoutUpdated() override;
};

/// Plasma, LXQt: wait for the reply; if it says that the menu has changed, fetch one level and take the next signal
/// for the echo of that change.
class PlasmaHost : public FakeHost {
public:
    PlasmaHost(std::string service, std::string path);
    void openMenu() override;

private:
    void layoutUpdated() override;
    bool isOpening_ = false;
    std::size_t heldBack_ = 0;
    bool ignoresNextUpdate_ = false;
};

/// GNOME: the structure first, then the properties of all its rows.
class GnomeHost : public FakeHost {
public:
    GnomeHost(std::string service, std::string path);
    void openMenu() override;

private:
    void layoutUpdated() override;
    void fetch();
    bool isStale_ = false;
};
