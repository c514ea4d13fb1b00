#include "platform/foundation/FileManager.h"

#include "platform/linux/foundation/UserDirectory.h"

#include <cerrno>
#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace foundation {

namespace {

// Reading is bounded, so that a sparse giant chosen by mistake is an error and not the end of the process.
constexpr std::size_t largestFile = std::size_t { 1 } << 30;

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

/// Reads up to `size` bytes, fewer only at the end of the file; -1 and errno on failure.
ssize_t readFully(int file, char* bytes, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(file, bytes + done, size - done);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return -1;
        if (count > 0)
            done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

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

Result<std::string> FileManager::contentsOfFile(const std::filesystem::path& path, std::size_t padding) const
{
    // Without O_NONBLOCK, opening a named pipe would wait for somebody to write into it.
    const Descriptor file(path, O_RDONLY | O_NONBLOCK);
    struct stat status { };
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return errorAt(path, errno);
    if (S_ISDIR(status.st_mode))
        return errorAt(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        return Error { path.string() + ": Not a regular file" };

    // One byte more than the file holds, so that a single turn sees its end; files that grow take more.
    std::string contents;
    std::size_t size = 0;
    for (auto room = static_cast<std::size_t>(status.st_size) + 1; contents.size() == size; room = size) {
        if (size + room > largestFile)
            return errorAt(path, EFBIG);
        contents.reserve(size + room + padding);
        contents.resize(size + room);
        const ssize_t count = readFully(file.number(), contents.data() + size, room);
        if (count < 0)
            return errorAt(path, errno);
        size += static_cast<std::size_t>(count);
    }
    contents.resize(size);
    return contents;
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
