#include "platform/linux/network/Messages.h"

namespace desktop::fetching {
namespace {

/// A read under way: the buffer must stay where it is.
struct Reading {
    MessageReader* reader;
    void (MessageReader::*then)(GBytes*);
    std::size_t size;
    void* buffer;
};

} // namespace

MessageReader::MessageReader(GInputStream* stream, const char* type, Receiver receiver)
    : stream_(retain(stream))
    , type_(type)
    , receiver_(std::move(receiver))
    , cancellable_(adopt(g_cancellable_new()))
{
    read(sizeof(std::uint32_t), &MessageReader::takeLength);
}

MessageReader::~MessageReader()
{
    g_cancellable_cancel(cancellable_.get());
}

void MessageReader::read(std::size_t size, void (MessageReader::*then)(GBytes*))
{
    const auto finished = +[](GObject* stream, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Reading> reading(static_cast<Reading*>(data));
        const Bytes bytes(g_bytes_new_take(reading->buffer, reading->size));
        ErrorPointer error;
        gsize count = 0;
        g_input_stream_read_all_finish(G_INPUT_STREAM(stream), result, &count, error.out());
        // Cancelled: the reader is gone.
        if (error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return;
        if (error || count < reading->size)
            return reading->reader->end();
        (reading->reader->*reading->then)(bytes.get());
    };
    auto* reading = new Reading { this, then, size, g_malloc(size) };
    g_input_stream_read_all_async(
        stream_.get(), reading->buffer, size, G_PRIORITY_DEFAULT, cancellable_.get(), finished, reading);
}

void MessageReader::takeLength(GBytes* bytes)
{
    std::uint32_t length = 0;
    std::memcpy(&length, g_bytes_get_data(bytes, nullptr), sizeof length);
    if (length == 0 || length > largestMessage)
        return end();
    if (isHeld_)
        heldLength_ = length;
    else
        read(length, &MessageReader::takeMessage);
}

void MessageReader::hold(bool isHeld)
{
    isHeld_ = isHeld;
    if (!isHeld_ && heldLength_ > 0)
        read(std::exchange(heldLength_, 0), &MessageReader::takeMessage);
}

void MessageReader::takeMessage(GBytes* bytes)
{
    // Asked for the next before this one is handed over, which may end the reader.
    read(sizeof(std::uint32_t), &MessageReader::takeLength);
    const auto receive = receiver_;
    receive(adoptVariant(g_variant_new_from_bytes(G_VARIANT_TYPE(type_), bytes, FALSE)));
}

void MessageReader::end()
{
    const auto receive = receiver_;
    receive(nullptr);
}

/// Under way: the message must stay where it is.
struct MessageWriter::Write {
    MessageWriter* writer;
    Bytes message;
};

MessageWriter::MessageWriter(GOutputStream* stream, std::function<void()> failed, std::function<void()> written)
    : stream_(retain(stream))
    , failed_(std::move(failed))
    , written_(std::move(written))
    , cancellable_(adopt(g_cancellable_new()))
{
}

MessageWriter::~MessageWriter()
{
    g_cancellable_cancel(cancellable_.get());
}

void MessageWriter::write(Bytes message)
{
    waitingSize_ += g_bytes_get_size(message.get());
    waiting_.push_back(std::move(message));
    writeOn();
}

void MessageWriter::writeOn()
{
    if (isWriting_ || waiting_.empty())
        return;
    const auto written = +[](GObject* stream, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Write> write(static_cast<Write*>(data));
        ErrorPointer error;
        g_output_stream_write_all_finish(G_OUTPUT_STREAM(stream), result, nullptr, error.out());
        // Cancelled: the writer is gone.
        if (error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return;
        auto* self = write->writer;
        self->isWriting_ = false;
        self->waitingSize_ -= g_bytes_get_size(write->message.get());
        if (!error)
            self->writeOn();
        if (const auto tell = error ? self->failed_ : self->written_)
            tell();
    };
    isWriting_ = true;
    auto* write = new Write { this, std::move(waiting_.front()) };
    waiting_.pop_front();
    gsize size = 0;
    const auto* contents = g_bytes_get_data(write->message.get(), &size);
    g_output_stream_write_all_async(
        stream_.get(), contents, size, G_PRIORITY_DEFAULT, cancellable_.get(), written, write);
}

} // namespace desktop::fetching
