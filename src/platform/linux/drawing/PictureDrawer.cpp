// Draws small square pictures: a program of its own, so that an idle Perchly holds none of the drawing libraries, and a
// picture from outside can hurt nothing there.
//   perchly-draw
//       answers the requests on its standard input until that ends (Messages.h)
//   perchly-draw decode
//       turns the picture on its standard input into one of a size and a format that can be trusted (Messages.h)
//   perchly-draw FORMAT KIND SUBJECT COLOUR PERCENT WEIGHT SIZE...
//       FORMAT  pixmaps: a serialised a(iiay) of ARGB32, network order, straight alpha; png: a file of the first size
//       KIND    file: SUBJECT is the path of a drawing; text: SUBJECT is the text; data: a picture on standard input
//       COLOUR  #rrggbb paints a drawing's coverage, or a text's letters, in that colour; own keeps a drawing's colours
//       PERCENT of the square's side that the drawing takes; of a text, the font's size
//       WEIGHT  of a text's font, as CSS counts it
#include "platform/linux/drawing/Limits.h"
#include "platform/linux/drawing/Messages.h"
#include "platform/linux/drawing/Outline.h"
#include "platform/linux/drawing/Output.h"
#include "platform/linux/drawing/PictureFile.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using drawing::Request;

constexpr int smallestSize = 1;
constexpr int largestSize = 512;
constexpr std::uint32_t longestRequest = std::uint32_t { 1 } << 20U;

std::optional<drawing::Colour> parseColour(const char* text)
{
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    if (std::sscanf(text, "#%2x%2x%2x", &red, &green, &blue) != 3)
        return std::nullopt;
    return drawing::Colour { red / 255.0, green / 255.0, blue / 255.0 };
}

bool isValid(const Request& request)
{
    for (const auto size : request.sizes) {
        if (size < smallestSize || size > largestSize)
            return false;
    }
    return !request.sizes.empty() && request.percent >= 1 && request.percent <= 100;
}

std::string standardInput()
{
    std::string contents;
    std::array<char, 65536> chunk {};
    while (const auto count = std::fread(chunk.data(), 1, chunk.size(), stdin))
        contents.append(chunk.data(), count);
    return contents;
}

bool write(const void* data, std::size_t size)
{
    return std::fwrite(data, 1, size, stdout) == size && std::fflush(stdout) == 0;
}

bool writeContents(GVariant* value)
{
    g_variant_ref_sink(value);
    const auto size = g_variant_get_size(value);
    const bool isWritten = size > 0 && write(g_variant_get_data(value), size);
    g_variant_unref(value);
    return isWritten;
}

std::optional<Request::Kind> parseKind(std::string_view name)
{
    constexpr std::pair<std::string_view, Request::Kind> kinds[] = {
        { "file", Request::Kind::File },
        { "text", Request::Kind::Text },
        { "data", Request::Kind::Data },
    };
    for (const auto& [known, kind] : kinds) {
        if (known == name)
            return kind;
    }
    return std::nullopt;
}

std::optional<Request> parse(int count, char** arguments)
{
    const auto kind = count < 8 ? std::nullopt : parseKind(arguments[2]);
    if (!kind)
        return std::nullopt;
    Request request;
    request.isPng = std::string_view(arguments[1]) == "png";
    request.kind = *kind;
    request.value = arguments[3];
    request.colour = parseColour(arguments[4]);
    request.percent = std::atoi(arguments[5]);
    request.weight = std::atoi(arguments[6]);
    for (auto index = 7; index < count; ++index)
        request.sizes.push_back(std::atoi(arguments[index]));
    return isValid(request) ? std::optional(request) : std::nullopt;
}

std::string bytesIn(GVariant* array)
{
    gsize size = 0;
    const auto* bytes = static_cast<const char*>(g_variant_get_fixed_array(array, &size, 1));
    return { bytes, size };
}

Request parse(GVariant* message)
{
    Request request;
    gboolean isPng = FALSE;
    guint16 kind = 0;
    guint32 percent = 0;
    guint32 weight = 0;
    GVariant* value = nullptr;
    const char* colour = nullptr;
    GVariantIter* sizes = nullptr;
    g_variant_get(message, "(bq@ay&suuau)", &isPng, &kind, &value, &colour, &percent, &weight, &sizes);
    request.isPng = isPng;
    request.kind = static_cast<Request::Kind>(kind);
    request.value = bytesIn(value);
    request.colour = parseColour(colour);
    request.percent = static_cast<int>(percent);
    request.weight = static_cast<int>(weight);
    guint32 size = 0;
    while (g_variant_iter_next(sizes, "u", &size))
        request.sizes.push_back(static_cast<int>(size));
    g_variant_iter_free(sizes);
    g_variant_unref(value);
    return request;
}

bool answer(GVariant* drawn)
{
    auto* message = g_variant_ref_sink(g_variant_new_variant(drawn));
    const auto size = static_cast<std::uint32_t>(g_variant_get_size(message));
    const bool isWritten = std::fwrite(&size, sizeof size, 1, stdout) == 1 && write(g_variant_get_data(message), size);
    g_variant_unref(message);
    return isWritten;
}

int serve()
{
    std::uint32_t size = 0;
    while (std::fread(&size, sizeof size, 1, stdin) == 1 && size <= longestRequest) {
        auto* buffer = g_malloc(size);
        if (std::fread(buffer, 1, size, stdin) != size)
            return 1;
        auto* bytes = g_bytes_new_take(buffer, size);
        auto* message
            = g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(drawing::requestType), bytes, FALSE));
        const auto request = parse(message);
        g_variant_unref(message);
        g_bytes_unref(bytes);
        if (!isValid(request) || !answer(answerTo(request)))
            return 1;
    }
    return 0;
}

/// Pixels that do not compress, as photos have them, stay small even so.
GVariant* smallPng(const drawing::Surface& picture)
{
    constexpr gsize small = 16U << 10U;
    auto* png = drawing::pngOf(picture);
    if (g_variant_get_size(png) <= small)
        return png;
    g_variant_unref(g_variant_ref_sink(png));
    return drawing::pngOf(drawing::halved(picture));
}

int decode()
{
    drawing::limitResources();
    const auto bytes = standardInput();
    const auto picture = drawing::decodedPicture(bytes);
    if (!picture)
        return 1;
    const auto outline = drawing::isDrawing(bytes) ? drawing::outlineOf(picture).value_or("") : "";
    return writeContents(g_variant_new("(@ay@ay)", smallPng(picture),
               g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, outline.data(), outline.size(), 1)))
        ? 0
        : 1;
}

int drawOnce(int count, char** arguments)
{
    auto request = parse(count, arguments);
    if (!request) {
        std::fputs("usage: perchly-draw [decode | pixmaps|png file|text|data SUBJECT #rrggbb|own PERCENT WEIGHT"
                   " SIZE...]\n",
            stderr);
        return 2;
    }
    if (request->kind == Request::Kind::Data) {
        drawing::limitResources();
        request->value = standardInput();
    }
    return writeContents(answerTo(*request)) ? 0 : 1;
}

} // namespace

int main(int count, char** arguments)
{
    const auto status = count == 1                                 ? serve()
        : count == 2 && std::string_view(arguments[1]) == "decode" ? decode()
                                                                   : drawOnce(count, arguments);
    // At once: all is written, and the font libraries' tidying up is of no use to a process that ends.
    std::_Exit(status);
}
