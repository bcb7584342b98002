#include "cli/Info.h"

#include "errors/Reporter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <span>

namespace belvor {
namespace {

/// A JSON text that grows at its end. The library writes single values only: a document of its own takes
/// memory even while it is destroyed, where a failure cannot be told.
class JsonText {
public:
    template <class T>
    JsonText& value(const T& single)
    {
        // Names come from files of any encoding: what is no UTF-8 is replaced, never refused.
        text += nlohmann::json(single).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        return *this;
    }
    /// JSON knows no infinity: the nearest number stands for it.
    JsonText& value(double number)
    {
        constexpr double most = std::numeric_limits<double>::max();
        const double finite = std::isnan(number) ? 0.0 : std::clamp(number, -most, most);
        text += nlohmann::json(finite).dump();
        return *this;
    }
    JsonText& numbers(std::span<const double> all)
    {
        text += '[';
        for (const double number : all) separated().value(number);
        text += ']';
        return *this;
    }
    /// `"name":`, behind a comma where something stands before.
    JsonText& key(const char* name)
    {
        separated().value(name);
        text += ':';
        return *this;
    }
    /// A comma, unless nothing stands before in this object or list.
    JsonText& separated()
    {
        if (text.back() != '{' && text.back() != '[') text += ',';
        return *this;
    }
    JsonText& operator<<(char mark)
    {
        text += mark;
        return *this;
    }

    std::string text = "{";
};

void describeMaterials(JsonText& json, const Model& model, Reporter& reporter)
{
    std::size_t count = 0;
    json << '[';
    for (const auto& [key, material] : model.materials()) {
        if (++count % 256 == 0) reporter.check(1, 0, 1.0);
        json.separated() << '{';
        json.key("index").value(material.index).key("name").value(material.name);
        json.key("colour").numbers(material.colour) << '}';
    }
    json << ']';
}

/// The chords of all curves together.
double lineLength(const Model& model) noexcept
{
    double length = 0.0;
    for (std::uint32_t i = 0; i < model.curveCount(); ++i) {
        const Curve& curve = model.curve(i);
        for (std::uint32_t k = 1; k < curve.pointCount; ++k)
            length += (model.curvePoint(curve.firstPoint + k) - model.curvePoint(curve.firstPoint + k - 1))
                          .length();
    }
    return length;
}

}   // namespace

std::string describeModel(const std::string& file, FileType type, const Reading& reading, bool lines,
                          Reporter& reporter)
{
    const Model& model = *reading.model;
    Point<3> centre;
    double radius = 0.0;
    model.bounds(centre, radius);
    Statistics counts;
    model.statistics(counts);

    JsonText json;
    json.key("file").value(file).key("type").value(nameOf(type));
    json.key("vertices").value(counts.vertices).key("edges").value(counts.edges);
    json.key("facets").value(counts.facets).key("materials").value(counts.materials);
    if (lines) json.key("lines").value(model.curveCount()).key("lineLength").value(lineLength(model));
    const double middle[] = {centre[0], centre[1], centre[2]};
    json.key("centre").numbers(middle).key("radius").value(radius);
    json.key("units") << '{';
    json.key("code").value(model.units().code).key("scale").value(model.units().scale) << '}';
    json.key("materialList");
    describeMaterials(json, model, reporter);
    if (formatOf(type)->drawsInPart) {
        json.key("skipped") << '[';
        for (const NotDrawn& entry : reading.account.notDrawn) {
            json.separated() << '{';
            json.key("type").value(entry.type).key("count").value(entry.count);
            json.key("reason").value(entry.reason) << '}';
        }
        json << ']';
    }
    json << '}';
    return std::move(json.text);
}

}   // namespace belvor
