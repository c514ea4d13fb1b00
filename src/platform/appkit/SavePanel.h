#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace appkit {

enum class ContentType { Json };

/// Asks the user where to save a file.
class SavePanel {
public:
    std::string title;
    ContentType allowedContentType = ContentType::Json;
    /// The name that the user finds in the panel.
    std::string nameFieldStringValue;

    /// The chosen place; none when the panel was cancelled or names no file.
    using CompletionHandler = std::function<void(std::optional<std::filesystem::path>)>;

    /// Shows the panel and returns at once; the panel may go. The handler is called once, on the main thread.
    void begin(CompletionHandler completionHandler) const;
};

} // namespace appkit
