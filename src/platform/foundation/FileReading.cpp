#include "platform/foundation/FileReading.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace foundation {
namespace {

Error errorAt(const std::filesystem::path& path, int code)
{
    return { path.string() + ": " + std::generic_category().message(code) };
}

/// An open file, closed with its holder.
class OpenFile {
public:
    explicit OpenFile(const std::filesystem::path& path)
        // Without O_NONBLOCK, opening a named pipe would wait for somebody to write into it.
        : number_(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~OpenFile()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

} // namespace

Result<std::string> readFile(const std::filesystem::path& path, std::size_t padding, std::size_t largestSize)
{
    const OpenFile file(path);
    struct stat status { };
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0)
        return errorAt(path, errno);
    if (S_ISDIR(status.st_mode))
        return errorAt(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        return Error { path.string() + ": Not a regular file" };
    const auto expectedSize = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
    if (expectedSize > largestSize)
        return errorAt(path, EFBIG);

    std::string contents;
    contents.reserve(expectedSize + padding);
    // Through a buffer: a string's own room would be filled with zeros first.
    std::array<char, 0x10000> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    for (;;) {
        const auto count = ::read(file.number(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errorAt(path, errno);
        if (count == 0)
            break;
        // It may have grown, or not have known its size.
        if (contents.size() + static_cast<std::size_t>(count) > largestSize)
            return errorAt(path, EFBIG);
        contents.append(buffer.data(), static_cast<std::size_t>(count));
    }
    contents.reserve(contents.size() + padding);
    return contents;
}

} // namespace foundation
