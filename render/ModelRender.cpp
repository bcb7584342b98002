// The operations of Model that need the renderer.

#include "render/Frame.h"
#include "scene/Model.h"

#include <locale>
#include <memory>
#include <ostream>

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

void writePoint(std::ostream& stream, const Point<3>& p)
{
    stream << ' ' << p[0] << ' ' << p[1] << ' ' << p[2];
}

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
    const std::locale before = stream.imbue(std::locale::classic());
    const Facet& which = facet(number);
    const Plane plane = picture && picture->reversed(number) ? -which.plane : which.plane;
    stream << number << ' ' << static_cast<const void*>(&which) << ' ' << plane.normal()[0] << ' '
           << plane.normal()[1] << ' ' << plane.normal()[2] << ' ' << plane.offset() << "\n\n";
    const auto projected = [picture](std::uint32_t index) {
        return picture ? picture->projected(index) : Point<3>();
    };
    for (std::uint32_t i = which.firstEdge; i < which.firstEdge + which.edgeCount; ++i) {
        std::uint32_t ends[2] = {edge(i).from, edge(i).to};
        if (projected(ends[0])[1] > projected(ends[1])[1])
            std::swap(ends[0], ends[1]);   // the upper one first
        for (const std::uint32_t end : ends) {
            stream << i << ' ' << static_cast<const void*>(&vertex(end));
            writePoint(stream, vertex(end).position);
            writePoint(stream, projected(end));
            stream << '\n';
        }
    }
    stream << '\n';
    stream.imbue(before);
}

}   // namespace belvor
