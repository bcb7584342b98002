// The operations of Model that need the renderer.

#include "render/Frame.h"
#include "scene/Model.h"

#include <charconv>
#include <memory>
#include <ostream>
#include <string>
#include <system_error>

namespace belvor {
namespace {

/// Takes the model's frame out for as long as it is used, so that two threads never share one.
class FrameInUse {
public:
    explicit FrameInUse(std::atomic<Frame*>& slot) : home(slot), frame(slot.exchange(nullptr)) {}
    FrameInUse(const FrameInUse&) = delete;
    FrameInUse& operator=(const FrameInUse&) = delete;
    ~FrameInUse() { delete home.exchange(frame.release()); }

    Frame& made()
    {
        if (!frame) frame = std::make_unique<Frame>();
        return *frame;
    }
    /// The last complete picture; none when there is none.
    const Frame* picture() const noexcept { return frame && frame->complete() ? frame.get() : nullptr; }

private:
    std::atomic<Frame*>& home;
    std::unique_ptr<Frame> frame;
};

/// What a stream writes without settings: of a number six digits.
class DumpText {
public:
    void add(std::uint32_t number) { text += std::to_string(number); }
    void add(double value)
    {
        char digits[32];
        text.append(digits,
                    std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6).ptr);
    }
    void add(const void* address)
    {
        char digits[32];
        text += "0x";
        text.append(
            digits,
            std::to_chars(digits, digits + sizeof digits, reinterpret_cast<std::uintptr_t>(address), 16).ptr);
    }
    void add(char mark) { text += mark; }
    void add(const Point<3>& p)
    {
        for (int axis = 0; axis < 3; ++axis) {
            text += ' ';
            add(p[axis]);
        }
    }
    /// Past the stream's formatting, which would bring all of the library's locales into every program.
    void writeTo(std::ostream& stream) const
    {
        if (stream.rdbuf()) stream.rdbuf()->sputn(text.data(), static_cast<std::streamsize>(text.size()));
    }

private:
    std::string text;
};

}   // namespace

Model::~Model() { delete keptFrame.load(); }

void Model::render(const Camera& camera, const LightSet& lighting, Buffer& buffer, Reporter& progress) const
{
    FrameInUse frame(keptFrame);
    frame.made().render(*this, camera, lighting, buffer, progress);
}

void Model::dump(std::ostream& stream, std::uint32_t number) const
{
    const FrameInUse inUse(keptFrame);
    const Frame* const picture = inUse.picture();
    const Facet& which = facet(number);
    const Plane plane = picture && picture->reversed(number) ? -which.plane : which.plane;
    DumpText text;
    const auto line = [&text](const auto&... parts) { (text.add(parts), ...); };
    const auto projected = [picture](std::uint32_t index) {
        return picture ? picture->projected(index) : Point<3>();
    };
    const Vector<3>& normal = plane.normal();
    line(number, ' ', static_cast<const void*>(&which), ' ', normal[0], ' ', normal[1], ' ', normal[2], ' ',
         plane.offset(), '\n', '\n');
    for (std::uint32_t i = which.firstEdge; i < which.firstEdge + which.edgeCount; ++i) {
        std::uint32_t ends[2] = {edge(i).from, edge(i).to};
        if (projected(ends[0])[1] > projected(ends[1])[1])
            std::swap(ends[0], ends[1]);   // the upper one first
        for (const std::uint32_t end : ends)
            line(i, ' ', static_cast<const void*>(&vertex(end)), vertex(end).position, projected(end), '\n');
    }
    line('\n');
    text.writeTo(stream);
}

}   // namespace belvor
