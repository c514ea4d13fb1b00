#pragma once

#include "platform/linux/desktop/GObject.h"

#include <cstdint>
#include <cstring>
#include <deque>

/// What a session and perchly-fetch say to each other: serialised variants, each after its length in four bytes.
namespace desktop::fetching {

/// Number, address, milliseconds of patience, header fields.
inline constexpr const char* requestType = "(tsua(ss))";
/// Number, what went wrong (empty: nothing), data.
inline constexpr const char* answerType = "(tsay)";

/// No download is larger than this, and no message much.
inline constexpr std::size_t largestDownload = std::size_t { 16 } << 20U;
inline constexpr std::uint32_t largestMessage = std::uint32_t { 24 } << 20U;

/// Reads messages until the stream's end or `cancellable`, which is told to the receiver by a null message.
/// The stream must outlive the reading.
class MessageReader {
public:
    using Receiver = std::function<void(VariantPointer)>;

    MessageReader(GInputStream* stream, const char* type, Receiver receiver);
    ~MessageReader();
    MessageReader(const MessageReader&) = delete;
    MessageReader& operator=(const MessageReader&) = delete;

    /// While held it leaves the contents of all further messages to the stream.
    void hold(bool isHeld);

private:
    void read(std::size_t size, void (MessageReader::*then)(GBytes*));
    void takeLength(GBytes* bytes);
    void takeMessage(GBytes* bytes);
    void end();

    ObjectPointer<GInputStream> stream_;
    const char* type_;
    Receiver receiver_;
    ObjectPointer<GCancellable> cancellable_;
    bool isHeld_ = false;
    /// Of a message that has come while held.
    std::uint32_t heldLength_ = 0;
};

struct FreeBytes {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

using Bytes = std::unique_ptr<GBytes, FreeBytes>;

/// Writes messages, one after the other, in the background: the other side may be writing too, and would never read
/// what is waited for here. What was not written when it goes is lost.
class MessageWriter {
public:
    /// The stream must outlive the writing. Each message that it has taken is told, and once that it takes no more,
    /// always later.
    MessageWriter(GOutputStream* stream, std::function<void()> failed, std::function<void()> written = {});
    ~MessageWriter();
    MessageWriter(const MessageWriter&) = delete;
    MessageWriter& operator=(const MessageWriter&) = delete;

    /// As packed() makes them.
    void write(Bytes message);

    /// The bytes of the messages that are not yet written.
    [[nodiscard]] std::size_t waitingSize() const { return waitingSize_; }

private:
    struct Write;
    void writeOn();

    ObjectPointer<GOutputStream> stream_;
    std::function<void()> failed_;
    std::function<void()> written_;
    ObjectPointer<GCancellable> cancellable_;
    std::deque<Bytes> waiting_;
    std::size_t waitingSize_ = 0;
    bool isWriting_ = false;
};

/// The message as it goes over the stream.
[[nodiscard]] inline GBytes* packed(GVariant* message)
{
    const auto owned = adoptVariant(message);
    const auto size = static_cast<std::uint32_t>(g_variant_get_size(message));
    // Stored at once, not by way of g_variant_get_data, which would keep a copy; what is stored wants to be aligned.
    constexpr std::size_t alignment = 8;
    auto* bytes = static_cast<char*>(g_malloc(alignment + size));
    std::memcpy(bytes + alignment - sizeof size, &size, sizeof size);
    g_variant_store(message, bytes + alignment);
    const std::unique_ptr<GBytes, FreeBytes> whole(g_bytes_new_take(bytes, alignment + size));
    return g_bytes_new_from_bytes(whole.get(), alignment - sizeof size, size + sizeof size);
}

} // namespace desktop::fetching
