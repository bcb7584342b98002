#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "render/EdgeTable.h"
#include "render/RowSpans.h"
#include "render/Shading.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "scene/Model.h"

#include <memory>

namespace belvor {

/// The order of a render. The only one that writes the per-render fields of a model.
class Renderer {
public:
    Renderer(Model& scene, const Camera& view, Reporter& reporter)
        : model(scene),
          camera(view),
          progress(reporter)
    {}

    void render(const LightSet& lighting, Buffer& buffer)
    {
        buffer.setModel(model);
        const bool plain = projectVertices();
        const int height = static_cast<int>(camera.height);
        if (!model.rowSpans) model.rowSpans = std::make_shared<RowSpans>();
        EdgeTable table(model.projectedVertices, plain, model.edgeStore, model.facetStore, buffer.width(),
                        height, *model.rowSpans, progress);
        shadeFacets(model.facetStore, model.shades, camera, lighting, model.brightness, progress);
        for (int y = 0; y < height; ++y) {
            progress.check(2, 1, static_cast<double>(y) / height);
            buffer.clear();
            table.fillShortFacets(y, buffer);
            buffer.scanFacets(table.row(y), camera);
            buffer.lineDone(y);
        }
    }

private:
    /// True when all lie in front of the eye, at places that are numbers.
    bool projectVertices()
    {
        bool plain = true;
        const BlockStore<Vertex>& vertices = model.vertexStore;
        model.screenExtent = Extent<3>::nothing();
        model.projectedVertices.resize(vertices.size());
        for (std::uint32_t i = 0; i < vertices.size(); ++i) {
            if (i % 256 == 0) progress.check(2, 0, i / (3.0 * vertices.size()));
            const Point<3> projected = camera.project(vertices[i].position);
            model.projectedVertices[i] = projected;
            model.screenExtent += projected;
            plain &= projected[0] == projected[0] && projected[1] == projected[1] && projected[2] < 0.0;
        }
        return plain;
    }

    Model& model;
    const Camera& camera;
    Reporter& progress;
};

void Model::render(const Camera& camera, const LightSet& lighting, Buffer& buffer, Reporter& progress)
{
    Renderer(*this, camera, progress).render(lighting, buffer);
}

}   // namespace belvor
