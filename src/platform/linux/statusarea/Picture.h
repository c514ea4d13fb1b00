#pragma once

#include "platform/linux/desktop/GObject.h"

#include <array>
#include <compare>
#include <memory>
#include <string>
#include <vector>

namespace desktop {

/// A small picture for the desktop: of a status item, of a menu row. Drawn when first asked for, by a program of its
/// own (perchly-draw): the drawing libraries would more than triple what an idle process weighs, and a picture from
/// outside can hurt nothing there. Main thread.
class Picture : public std::enable_shared_from_this<Picture> {
public:
    struct Subject {
        /// Data: the contents of a picture's file.
        enum class Kind { File, Text, Data };
        Kind kind = Kind::File;
        /// The file's path, the text, or the data.
        std::string value;
        /// "#rrggbb" paints the drawing's coverage in one colour; empty keeps its own colours.
        std::string colour;
        /// How much of the square's side the drawing takes, in percent; of a text, the font's size.
        int percent = 100;
        /// The weight of a text's font, as CSS counts it.
        int weight = 500;

        auto operator<=>(const Subject&) const = default; // NOLINT(modernize-use-nullptr): there is no pointer
    };

    using Receiver = std::function<void(GVariant*)>;

    /// The same subject gives the same picture while somebody holds it.
    [[nodiscard]] static std::shared_ptr<Picture> of(const Subject& subject);

    /// Hands over a status item's pixmaps, a(iiay): 16 to 64 pixels, at once where they are drawn already.
    /// None where it cannot be drawn. They are large, and hosts keep their own: some seconds after they were last asked
    /// for they are dropped, to be drawn again for the next who asks.
    void withPixmaps(Receiver receiver);
    [[nodiscard]] bool holdsPixmaps() const { return pixmaps_.value != nullptr; }

    /// Hands over a menu row's icon, ay: a PNG file, empty where it cannot be drawn. It is small, and is kept.
    void withIcon(Receiver receiver) { with(icon_, std::move(receiver)); }

    /// The menu row's icon if it has been drawn, or null.
    [[nodiscard]] GVariant* drawnIcon() const { return icon_.value.get(); }

private:
    struct Rendition {
        const char* format;
        const GVariantType* type;
        std::vector<unsigned> sizes;
        VariantPointer value;
        std::vector<Receiver> waiting;
    };

    explicit Picture(Subject subject);
    void with(Rendition& rendition, Receiver receiver);
    void draw(Rendition& rendition);
    static void finish(Rendition& rendition, VariantPointer drawn);
    [[nodiscard]] GVariant* request(const Rendition& rendition) const;
    [[nodiscard]] VariantPointer preparedDrawing(const Rendition& rendition) const;
    void dropPixmaps();

    Subject subject_;
    Rendition pixmaps_;
    Rendition icon_;
    SourceHandle dropping_;
};

/// Readable on dark and on light: its contrast to white and to black is about the same (4 and 5.3 to 1), and hosts
/// recolour nothing that comes as pixels.
inline constexpr const char* templateColour = "#808080";

} // namespace desktop
