#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/FatalError.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/foundation/UserDirectory.h"

#include <filesystem>

namespace foundation {

namespace {

constexpr const char* group = "Preferences";

struct UnrefKeyFile {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, UnrefKeyFile>;

std::optional<std::filesystem::path> preferencesFile()
{
    const auto folder = userDirectory("XDG_CONFIG_HOME", ".config");
    if (!folder)
        return std::nullopt;
    return *folder / "Perchly" / "preferences.ini";
}

/// A file that is missing or broken counts as an empty one.
KeyFile load()
{
    KeyFile file(g_key_file_new());
    const auto path = preferencesFile();
    if (!path)
        return file;
    const auto text = FileManager::defaultManager().contentsOfFile(*path);
    if (!text || text.value().empty())
        return file;
    if (!g_key_file_load_from_data(
            file.get(), text.value().data(), text.value().size(), G_KEY_FILE_KEEP_COMMENTS, nullptr))
        file.reset(g_key_file_new());
    return file;
}

Status save(GKeyFile* file)
{
    const auto path = preferencesFile();
    if (!path)
        return Error { "there is no home folder" };
    if (auto created = FileManager::defaultManager().createDirectory(path->parent_path()); !created)
        return created;
    desktop::ErrorPointer error;
    if (g_key_file_save_to_file(file, path->c_str(), error.out()))
        return success();
    return Error { error.message() };
}

} // namespace

struct UserDefaults::Native {
    KeyFile file; // read when first asked for

    GKeyFile* loaded()
    {
        if (!file)
            file = load();
        return file.get();
    }

    void saveOrLog()
    {
        if (const auto saved = save(loaded()); !saved)
            log("DEBUG: UserDefaults - Save error: " + saved.error().localizedDescription);
    }
};

UserDefaults::UserDefaults()
    : native_(std::make_unique<Native>())
{
}

UserDefaults::~UserDefaults() = default;

UserDefaults& UserDefaults::standard()
{
    static UserDefaults defaults;
    return defaults;
}

std::optional<std::string> UserDefaults::stringForKey(std::string_view key) const
{
    assertMainThread();
    const desktop::GLibPointer<> value(
        g_key_file_get_string(native_->loaded(), group, std::string(key).c_str(), nullptr));
    if (!value)
        return std::nullopt;
    return std::string(value.get());
}

void UserDefaults::setString(std::string_view value, std::string_view key)
{
    assertMainThread();
    g_key_file_set_string(native_->loaded(), group, std::string(key).c_str(), std::string(value).c_str());
    native_->saveOrLog();
}

void UserDefaults::removeObjectForKey(std::string_view key)
{
    assertMainThread();
    if (g_key_file_remove_key(native_->loaded(), group, std::string(key).c_str(), nullptr))
        native_->saveOrLog();
}

} // namespace foundation
