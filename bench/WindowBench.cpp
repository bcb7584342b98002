// The wait in the window: from a drawing dropped on a running belvor.exe to the last row of its picture on
// the screen, and the same drawing by belvor-render from its start to its end, with the picture of the same
// size in an Ombr file. Both programs stand beside this one.
//
//     belvor-window-bench DRAWING [ROUNDS]
#include "tests/window/Screen.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>

namespace belvor::window {
namespace {

double seconds()
{
    LARGE_INTEGER ticks, frequency;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
}

std::string sizeOf(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    return std::to_string(client.right) + "x" + std::to_string(client.bottom);
}

double renderingTime(const std::string& size, const std::string& drawing, const std::string& image)
{
    const double start = seconds();
    if (exitStatusOf(startProcess("belvor-render.exe", {"--quiet", "--size", size, drawing, image}), 120000)
        != 0)
        throw Failure("belvor-render fails");
    return seconds() - start;
}

/// The last row of a picture that is not all background: until it is drawn, the area shows background there.
int lastRowOf(const Picture& picture)
{
    for (int row = picture.height - 1; row >= 0; --row)
        for (int column = 0; column < picture.width; ++column)
            if (picture.at(column, row) != 0) return row;
    throw Failure("the picture shows nothing");
}

/// Whether the screen shows that row of the picture in the window, up to the colours, which a new model of a
/// running program need not share with another program's.
bool shown(HWND window, const Picture& wanted, int row)
{
    POINT origin{0, row};
    ClientToScreen(window, &origin);
    const WindowDC screen(nullptr);
    const MemoryDC memory(screen.get());
    const GdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen.get(), wanted.width, 1));
    {
        const Selection selected(memory.get(), bitmap.get());
        BitBlt(memory.get(), 0, 0, wanted.width, 1, screen.get(), origin.x, origin.y, SRCCOPY);
    }
    const Picture strip = pictureOf(bitmap.get(), wanted.width, 1);
    for (int column = 0; column < wanted.width; ++column)
        if ((strip.at(column, 0) != 0) != (wanted.at(column, row) != 0)) return false;
    return true;
}

double windowTime(const Program& program, const std::string& drawing, const Picture& wanted)
{
    const HWND area = program.child(ID_DISPLAY);
    const int row = lastRowOf(wanted);
    if (shown(area, wanted, row)) throw Failure("the row is there before the drawing");
    const double start = seconds();
    program.dropFile(drawing);
    while (!shown(area, wanted, row)) {
        if (seconds() - start > 120) throw Failure("the last row does not come");
        Sleep(2);
    }
    return seconds() - start;
}

void measure(const std::string& drawing, int rounds)
{
    const std::string image = drawing + ".omb";
    double window = std::numeric_limits<double>::max(), file = window;
    for (int round = 0; round < rounds; ++round) {
        const Program program;
        const std::string size = sizeOf(program.child(ID_DISPLAY));
        file = std::min(file, renderingTime(size, drawing, image));
        std::ifstream bytes(image, std::ios::binary);
        const Picture wanted = pictureIn(std::string(std::istreambuf_iterator<char>(bytes), {}));
        Sleep(1000);   // the window has settled
        window = std::min(window, windowTime(program, drawing, wanted));
        std::printf("%s: window %.3f s, belvor-render %.3f s, least of %d\n", size.c_str(), window, file,
                    round + 1);
        std::fflush(stdout);
    }
    DeleteFileW(toWide(image).c_str());
    std::printf("window over belvor-render: %.3f\n", window / file);
}

}   // namespace
}   // namespace belvor::window

int main(int count, char** arguments)
{
    if (count < 2) return std::puts("belvor-window-bench DRAWING [ROUNDS]"), 2;
    try {
        belvor::window::measure(arguments[1], count > 2 ? std::max(1, std::atoi(arguments[2])) : 10);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
