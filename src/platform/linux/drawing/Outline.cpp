#include "platform/linux/drawing/Outline.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <utility>
#include <vector>

namespace drawing {
namespace {

constexpr double inside = 0.5;
constexpr std::size_t longestPath = 48U << 10U;

struct Point {
    double x;
    double y;
};

/// The coverage at the middle of each pixel; none outside.
class Coverage {
public:
    explicit Coverage(const Surface& picture)
        : side_(cairo_image_surface_get_width(picture.get()))
        , stride_(cairo_image_surface_get_stride(picture.get()))
        , data_(cairo_image_surface_get_data(picture.get()))
    {
    }

    [[nodiscard]] int side() const { return side_; }
    [[nodiscard]] double at(int x, int y) const
    {
        if (x < 0 || y < 0 || x >= side_ || y >= side_)
            return 0;
        const auto* row = reinterpret_cast<const std::uint32_t*>(data_ + std::ptrdiff_t { y } * stride_);
        return (row[x] >> 24U) / 255.0;
    }

private:
    int side_;
    int stride_;
    const unsigned char* data_;
};

/// Where the outline crosses the line between two neighbouring pixels: the pixel, and whether its neighbour is the one
/// below or the one to the right.
struct Crossing {
    int x;
    int y;
    bool isDownwards;
    auto operator<=>(const Crossing&) const = default; // NOLINT(modernize-use-nullptr): there is no pointer
};

Point pointAt(const Coverage& coverage, const Crossing& crossing)
{
    const auto nextX = crossing.x + (crossing.isDownwards ? 0 : 1);
    const auto nextY = crossing.y + (crossing.isDownwards ? 1 : 0);
    const auto here = coverage.at(crossing.x, crossing.y);
    const auto part = (inside - here) / (coverage.at(nextX, nextY) - here);
    return { crossing.x + 0.5 + (crossing.isDownwards ? 0 : part),
        crossing.y + 0.5 + (crossing.isDownwards ? part : 0) };
}

using Steps = std::map<Crossing, Crossing>;

/// Between four pixels, going round them clockwise, the outline leads from where one goes out to where one comes in.
void addSteps(const Coverage& coverage, int x, int y, Steps& steps)
{
    const std::array<bool, 4> corners { coverage.at(x, y) >= inside, coverage.at(x + 1, y) >= inside,
        coverage.at(x + 1, y + 1) >= inside, coverage.at(x, y + 1) >= inside };
    const std::array<Crossing, 4> sides { Crossing { x, y, false }, { x + 1, y, true }, { x, y + 1, false },
        { x, y, true } };
    for (std::size_t out = 0; out < 4; ++out) {
        if (!corners.at(out) || corners.at((out + 1) % 4))
            continue;
        auto in = (out + 1) % 4;
        while (corners.at(in) || !corners.at((in + 1) % 4))
            in = (in + 1) % 4;
        steps.emplace(sides.at(out), sides.at(in));
    }
}

Steps stepsOf(const Coverage& coverage)
{
    Steps steps;
    for (auto y = -1; y < coverage.side(); ++y) {
        for (auto x = -1; x < coverage.side(); ++x)
            addSteps(coverage, x, y, steps);
    }
    return steps;
}

double distance(const Point& point, const Point& from, const Point& to)
{
    const auto dx = to.x - from.x;
    const auto dy = to.y - from.y;
    const auto length = std::hypot(dx, dy);
    if (length == 0)
        return std::hypot(point.x - from.x, point.y - from.y);
    return std::abs(dx * (point.y - from.y) - dy * (point.x - from.x)) / length;
}

/// Drops the points that the straight line between others passes close enough.
std::vector<Point> simplified(const std::vector<Point>& points)
{
    constexpr auto tolerance = 0.1;
    constexpr std::size_t longestStride = 64;
    std::vector<Point> kept { points.front() };
    std::size_t last = 0;
    for (std::size_t next = 2; next < points.size(); ++next) {
        bool isStraight = next - last < longestStride;
        for (auto between = last + 1; between < next && isStraight; ++between)
            isStraight = distance(points[between], points[last], points[next]) <= tolerance;
        if (isStraight)
            continue;
        last = next - 1;
        kept.push_back(points[last]);
    }
    kept.push_back(points.back());
    return kept;
}

void append(std::string& path, char command, const Point& point)
{
    std::array<char, 32> text {};
    // Tenths as whole numbers: the box is ten times as large as the picture.
    const auto length = std::snprintf(
        text.data(), text.size(), "%c%ld %ld", command, std::lround(point.x * 10), std::lround(point.y * 10));
    path.append(text.data(), static_cast<std::size_t>(length));
}

std::string pathOf(const Coverage& coverage)
{
    std::string path;
    auto steps = stepsOf(coverage);
    while (!steps.empty() && path.size() <= longestPath) {
        std::vector<Point> points;
        for (auto step = steps.begin(); step != steps.end();) {
            points.push_back(pointAt(coverage, step->first));
            const auto next = step->second;
            steps.erase(step);
            step = steps.find(next);
        }
        char command = 'M';
        for (const auto& point : simplified(points)) {
            append(path, command, point);
            command = 'L';
        }
        path += 'Z';
    }
    return path;
}

/// Not counting the soft edges.
bool isHalfTransparent(const Coverage& coverage)
{
    constexpr auto notable = 0.03;
    const auto isBetween = [&](int x, int y) { return coverage.at(x, y) > 0.1 && coverage.at(x, y) < 0.9; };
    auto inked = 0;
    auto between = 0;
    for (auto y = 0; y < coverage.side(); ++y) {
        for (auto x = 0; x < coverage.side(); ++x) {
            inked += coverage.at(x, y) > 0.1 ? 1 : 0;
            const bool isSurrounded = isBetween(x, y) && isBetween(x - 1, y) && isBetween(x + 1, y)
                && isBetween(x, y - 1) && isBetween(x, y + 1);
            between += isSurrounded ? 1 : 0;
        }
    }
    return between > inked * notable;
}

} // namespace

std::optional<std::string> outlineOf(const Surface& picture)
{
    cairo_surface_flush(picture.get());
    const Coverage coverage(picture);
    if (isHalfTransparent(coverage))
        return std::nullopt;
    const auto path = pathOf(coverage);
    if (path.empty() || path.size() > longestPath)
        return std::nullopt;
    const auto box = std::to_string(coverage.side() * 10);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\" viewBox=\"0 0 " + box + " " + box
        + "\"><style type=\"text/css\" id=\"current-color-scheme\">.ColorScheme-Text { color: #2e3436; }</style>"
          "<path class=\"ColorScheme-Text\" fill=\"currentColor\" fill-rule=\"evenodd\" d=\""
        + path + "\"/></svg>\n";
}

} // namespace drawing
