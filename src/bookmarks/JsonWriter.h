#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace perchly {

/// Writes nested JSON objects and arrays, compactly or with one member per line.
/// The caller keeps the order: inside an object every value or begin follows a key.
class JsonWriter {
public:
    explicit JsonWriter(bool indented)
        : indented_(indented)
    {
    }

    void reserve(std::size_t size) { output_.reserve(size); }

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    /// The name goes out as it stands: it must need no escapes.
    void key(std::string_view name);
    void value(std::string_view text);
    void value(double number);
    void value(bool flag);

    /// Starts the next element of an array.
    void element() { separate(); }

    /// The document, or none when a number was not finite or a text was not UTF-8.
    [[nodiscard]] std::optional<std::string> finish() &&;

private:
    void begin(char bracket);
    void end(char bracket);
    void separate();
    void breakLine();

    std::string output_;
    bool indented_;
    bool isEmpty_ = true; // nothing in the innermost object or array yet
    bool isFinite_ = true;
    std::size_t depth_ = 0;
};

} // namespace perchly
