#include "platform/foundation/FileManager.h"

#include "platform/foundation/FileReading.h"
#include "platform/linux/foundation/UserDirectory.h"

#include <cerrno>
#include <fcntl.h>
#include <glib.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace foundation {

namespace {

Error errorAt(const std::filesystem::path& path, int code)
{
    return { path.string() + ": " + g_strerror(code) };
}

/// An open file, closed with its holder.
class Descriptor {
public:
    Descriptor(const std::filesystem::path& path, int flags)
        : number_(::open(path.c_str(), flags | O_CLOEXEC, 0666))
    {
    }
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

    /// False when something written earlier turns out to be lost.
    bool close()
    {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0 || errno == EINTR;
    }

private:
    int number_;
};

bool writeFully(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Takes the room for a file of that size while its contents are still untouched: on a full disk they stay.
bool takeRoom(int file, std::size_t size)
{
    if (size == 0)
        return true;
    auto result = 0;
    do {
        result = ::fallocate(file, 0, 0, static_cast<off_t>(size));
    } while (result != 0 && errno == EINTR);
    return result == 0 || errno == EOPNOTSUPP || errno == ENOSYS || errno == ENODEV || errno == ESPIPE;
}

/// Cuts off what a longer file held before. What is no file has no end.
bool endFile(int file, std::size_t size)
{
    return ::ftruncate(file, static_cast<off_t>(size)) == 0 || errno == EINVAL;
}

} // namespace

FileManager& FileManager::defaultManager()
{
    static FileManager manager;
    return manager;
}

std::optional<std::filesystem::path> FileManager::applicationSupportDirectory() const
{
    return userDirectory("XDG_DATA_HOME", ".local/share");
}

bool FileManager::fileExists(const std::filesystem::path& path) const
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

Status FileManager::createDirectory(const std::filesystem::path& path) const
{
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error)
        return errorAt(path, error.value());
    return success();
}

Result<std::string> FileManager::contentsOfFile(
    const std::filesystem::path& path, std::size_t padding, std::size_t largestSize) const
{
    return readFile(path, padding, largestSize);
}

Status FileManager::write(std::string_view bytes, const std::filesystem::path& path) const
{
    const auto isNew = !fileExists(path);
    // O_NONBLOCK: a pipe that nobody reads is an error, not a standstill.
    Descriptor file(path, O_WRONLY | O_CREAT | O_NONBLOCK);
    if (file.isOpen() && takeRoom(file.number(), bytes.size()) && writeFully(file.number(), bytes)
        && endFile(file.number(), bytes.size()) && file.close())
        return success();
    const auto code = errno;
    if (isNew && file.isOpen())
        ::unlink(path.c_str());
    return errorAt(path, code);
}

} // namespace foundation
