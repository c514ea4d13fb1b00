// Looks at the screen for the tests.
//   perchly_screen_probe cursor          prints the name of the shape that the pointer has
//   perchly_screen_probe watch X,Y...    prints a line "NUMBER RRGGBB MILLISECOND" for each of the places as it is,
//                                        then for each change of one (they are numbered from 0), until its input ends;
//                                        last, a line "looks COUNT" says how often it has looked
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xfixes.h>

#include <poll.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

struct Place {
    int x = 0;
    int y = 0;
    unsigned long colour = ~0UL;
};

int printCursor(Display* display)
{
    auto* shape = XFixesGetCursorImage(display);
    if (!shape || !shape->name)
        return EXIT_FAILURE;
    std::puts(shape->name);
    XFree(shape);
    return EXIT_SUCCESS;
}

unsigned long colourAt(Display* display, const Place& place)
{
    auto* image = XGetImage(display, DefaultRootWindow(display), place.x, place.y, 1, 1, AllPlanes, ZPixmap);
    const auto colour = XGetPixel(image, 0, 0) & 0xFFFFFF;
    XDestroyImage(image);
    return colour;
}

long millisecondsSince(std::chrono::steady_clock::time_point start)
{
    using namespace std::chrono;
    return static_cast<long>(duration_cast<milliseconds>(steady_clock::now() - start).count());
}

bool hasInputEnded()
{
    pollfd input { 0, POLLIN, 0 };
    return poll(&input, 1, 0) > 0;
}

int watch(Display* display, std::vector<Place> places)
{
    const auto start = std::chrono::steady_clock::now();
    auto looks = 0UL;
    while (!hasInputEnded()) {
        for (auto& place : places) {
            const auto colour = colourAt(display, place);
            if (colour == place.colour)
                continue;
            place.colour = colour;
            std::printf("%td %06lX %ld\n", &place - places.data(), colour, millisecondsSince(start));
        }
        std::fflush(stdout);
        ++looks;
    }
    std::printf("looks %lu\n", looks);
    return EXIT_SUCCESS;
}

std::vector<Place> placesFrom(int count, char** arguments)
{
    std::vector<Place> places;
    for (auto index = 0; index < count; ++index) {
        Place place;
        if (std::sscanf(arguments[index], "%d,%d", &place.x, &place.y) == 2)
            places.push_back(place);
    }
    return places;
}

} // namespace

int main(int argc, char** argv)
{
    auto* display = XOpenDisplay(nullptr);
    if (!display)
        return EXIT_FAILURE;
    const std::string_view order = argc > 1 ? argv[1] : "";
    if (order == "cursor")
        return printCursor(display);
    const auto places = placesFrom(argc - 2, argv + 2);
    if (order == "watch" && !places.empty())
        return watch(display, places);
    std::fputs("usage: perchly_screen_probe cursor | watch X,Y...\n", stderr);
    return EXIT_FAILURE;
}
