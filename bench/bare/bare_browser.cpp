// One window with one web view, on the screen at once: bare_browser ADDRESS
#include "BareBrowser.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: bare_browser ADDRESS\n", stderr);
        return 2;
    }
    bare::startEngine();
    gtk_window_present(bare::makeWindow(bare::makeView(bare::makeSession(), argv[1])));
    bare::run();
}
