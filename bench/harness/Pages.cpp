#include "Pages.h"

#include <cstdint>

namespace bench {
namespace {

constexpr auto html = "text/html; charset=utf-8";

/// At the left of the page, so that the colour stays in sight.
constexpr auto head = "<!doctype html><html lang=en><head><meta charset=utf-8><title>A page</title>"
                      "<style>html{background:#c0178a;color:white;font:14px/1.4 sans-serif}main{width:180px}"
                      "img{width:160px;border-radius:8px}</style></head><body><main><h1>A page</h1>";

constexpr auto script = R"js(<script>
const rows = Array.from({ length: 5000 }, (_, index) => ({ index, name: `Row ${index}`, tags: ["a", "b", String(index)] }));
const table = document.createElement("table");
for (const row of rows.slice(0, 500)) {
    const line = table.insertRow();
    line.insertCell().textContent = row.index;
    line.insertCell().textContent = row.name;
    line.addEventListener("click", () => row.tags.push("clicked"));
}
document.querySelector("main").append(table);
</script>)js";

constexpr auto unrest = R"js(<style>
@keyframes turn { to { transform: rotate(360deg); } }
b { display: inline-block; width: 60px; height: 60px; background: white; animation: turn 1s linear infinite; }
</style><p><b></b></p><p id=frames></p><p id=ticks></p><script>
const [frames, ticks] = ["frames", "ticks"].map((id) => document.getElementById(id));
let frame = 0;
let tick = 0;
const draw = () => {
    frames.textContent = ++frame;
    requestAnimationFrame(draw);
};
requestAnimationFrame(draw);
setInterval(() => { ticks.textContent = ++tick; }, 16);
</script>)js";

std::string article()
{
    constexpr auto paragraphs = 120;
    constexpr auto words = 60;
    constexpr auto pictureEvery = 20;
    std::string page = head;
    for (auto paragraph = 0; paragraph < paragraphs; ++paragraph) {
        page += "<section id=s" + std::to_string(paragraph) + "><h2>Section</h2><p>";
        for (auto word = 0; word < words; ++word)
            page += word % 10 == 9 ? "<a href=#s" + std::to_string(word) + ">reference</a> " : "ordinary words ";
        page += "</p>";
        if (paragraph % pictureEvery == 0)
            page += "<img alt='' src='/picture?" + std::to_string(paragraph) + "'>";
        page += "</section>";
    }
    return page + script;
}

constexpr auto drawing = R"xml(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">
<path d="M8 1 15 15H1z"/></svg>)xml";

/// A bitmap.
std::string picture(int width, int height)
{
    constexpr auto headerSize = 54;
    std::string file = "BM";
    const auto number = [&file](std::uint32_t value, int bytes) {
        for (auto byte = 0; byte < bytes; ++byte)
            file += static_cast<char>(value >> (8 * byte) & 0xff);
    };
    const auto unsign = [](int value) { return static_cast<std::uint32_t>(value); };
    number(headerSize + unsign(width * height * 3), 4);
    number(0, 4);
    number(headerSize, 4);
    number(40, 4); // the rest of the header
    number(unsign(width), 4);
    number(unsign(height), 4);
    number(1, 2);
    number(24, 2);
    for (auto field = 0; field < 6; ++field)
        number(0, 4);
    for (auto y = 0; y < height; ++y) {
        for (auto x = 0; x < width; ++x)
            number(unsign(x * 255 / width) << 16 | unsign(y * 255 / height), 3);
    }
    return file;
}

} // namespace

std::optional<Resource> resourceAt(std::string_view address)
{
    const auto path = address.substr(0, address.find('?'));
    if (path == "/")
        return Resource { html, std::string(head) + "<p>With a line of text.</p>" };
    if (path == "/article")
        return Resource { html, article() };
    if (path == "/busy")
        return Resource { html, std::string(head) + unrest };
    if (path == "/picture")
        return Resource { "image/bmp", picture(640, 360) };
    if (path == "/icon.svg")
        return Resource { "image/svg+xml", drawing };
    if (path == "/s2/favicons" && !address.ends_with(siteWithoutIcon))
        return Resource { "image/bmp", picture(64, 64) };
    return std::nullopt;
}

} // namespace bench
