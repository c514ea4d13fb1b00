#include "platform/linux/statusarea/Picture.h"

#include "platform/linux/desktop/ReturnedMemory.h"
#include "platform/linux/statusarea/DrawingProgram.h"

#include <algorithm>

namespace desktop {
namespace {

/// Hosts ask several times within moments of a change.
constexpr unsigned pixmapsPatience = 3000;

GVariant* byteArray(const std::string& bytes)
{
    return g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), 1);
}

} // namespace

std::shared_ptr<Picture> Picture::of(const Subject& subject)
{
    // There are no more of them than status items and menu rows, and as keys the subjects would take their room twice.
    static std::vector<std::weak_ptr<Picture>> pictures;
    for (const auto& known : pictures) {
        if (auto picture = known.lock(); picture && picture->subject_ == subject)
            return picture;
    }
    std::erase_if(pictures, [](const auto& known) { return known.expired(); });
    auto picture = std::shared_ptr<Picture>(new Picture(subject));
    pictures.push_back(picture);
    return picture;
}

Picture::Picture(Subject subject)
    : subject_(std::move(subject))
    , pixmaps_ { "pixmaps", G_VARIANT_TYPE("a(iiay)"), { 16, 22, 24, 32, 48, 64 }, nullptr, {} }
    , icon_ { "png", G_VARIANT_TYPE_BYTESTRING, { 16 }, nullptr, {} }
{
}

void Picture::withPixmaps(Receiver receiver)
{
    dropping_.reset();
    with(pixmaps_, [weak = weak_from_this(), receiver = std::move(receiver)](GVariant* pixmaps) {
        receiver(pixmaps);
        const auto self = weak.lock();
        if (self)
            self->dropping_ = callAfter(pixmapsPatience, [picture = self.get()] { picture->dropPixmaps(); });
    });
}

void Picture::dropPixmaps()
{
    dropping_.reset();
    pixmaps_.value.reset();
    returnMemorySoon();
}

void Picture::with(Rendition& rendition, Receiver receiver)
{
    if (rendition.value)
        return receiver(rendition.value.get());
    rendition.waiting.push_back(std::move(receiver));
    if (rendition.waiting.size() == 1)
        draw(rendition);
}

void Picture::draw(Rendition& rendition)
{
    if (auto prepared = preparedDrawing(rendition))
        return finish(rendition, std::move(prepared));
    DrawingProgram::shared().draw(request(rendition),
        [self = shared_from_this(), &rendition](VariantPointer drawn) { finish(rendition, std::move(drawn)); });
}

/// As drawing/Messages.h has it.
GVariant* Picture::request(const Rendition& rendition) const
{
    const bool isPng = &rendition == &icon_;
    auto* sizes = g_variant_new_fixed_array(
        G_VARIANT_TYPE_UINT32, rendition.sizes.data(), rendition.sizes.size(), sizeof(unsigned));
    return g_variant_new("(bq@aysuu@au)", isPng, static_cast<guint16>(subject_.kind), byteArray(subject_.value),
        subject_.colour.c_str(), static_cast<guint32>(subject_.percent), static_cast<guint32>(subject_.weight), sizes);
}

/// What the build has drawn already, beside the file: a picture that every status area asks for at every start.
VariantPointer Picture::preparedDrawing(const Rendition& rendition) const
{
    if (subject_.kind != Subject::Kind::File || subject_.colour.empty() || subject_.percent != 100)
        return nullptr;
    const auto path = subject_.value + "." + subject_.colour.substr(1) + "." + rendition.format;
    char* contents = nullptr;
    gsize size = 0;
    if (!g_file_get_contents(path.c_str(), &contents, &size, nullptr))
        return nullptr;
    auto* bytes = g_bytes_new_take(contents, size);
    auto prepared = adoptVariant(g_variant_new_from_bytes(rendition.type, bytes, FALSE));
    g_bytes_unref(bytes);
    return prepared;
}

void Picture::finish(Rendition& rendition, VariantPointer drawn)
{
    const bool isUsable = drawn && g_variant_is_of_type(drawn.get(), rendition.type);
    rendition.value = isUsable ? std::move(drawn)
                               : adoptVariant(g_variant_new_array(g_variant_type_element(rendition.type), nullptr, 0));
    for (const auto& receiver : std::exchange(rendition.waiting, {}))
        receiver(rendition.value.get());
}

} // namespace desktop
