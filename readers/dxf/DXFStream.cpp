#include "readers/dxf/DXFStream.h"

#include "platform/Files.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace belvor {

DXFStream::DXFStream(Source source)
    : begin(source.bytes.data()),
      end(begin + source.bytes.size()),
      here{begin, 1},
      name(std::move(source.name)),
      record(name, source.rules),
      reporter(source.reporter),
      nextStep(end)
{
    const std::string log = name + ".log";
    if (source.logging && !isSameFile(log, name)) diagnostics = DXFLog(log);   // a link may lead back
}

DXFStream::~DXFStream() = default;

std::unique_ptr<DXFStream> DXFStream::over(std::string_view bytes, const std::string& fileName,
                                           Reporter& reporter, bool logging, ReadingRules rules)
{
    return make({bytes, fileName, reporter, logging, rules});
}

std::unique_ptr<DXFStream> DXFStream::make(Source source)
{
    return isBinaryFile(source.bytes) ? makeBinary(std::move(source)) : makeAscii(std::move(source));
}

void DXFStream::checkProgress()
{
    if (begin == end) return;   // nothing to measure by
    if (here.at >= nextStep) goFurther();
    reporter.check(1, 0, static_cast<double>(here.at - begin) / static_cast<double>(end - begin));
}

void DXFStream::whenFurther(std::size_t step, std::function<void(const char*)> call)
{
    stepSize = step;
    further = std::move(call);
    goFurther();
}

void DXFStream::goFurther()
{
    if (further) further(here.at);
    nextStep = here.at + std::min(stepSize, static_cast<std::size_t>(end - here.at));
}

bool DXFStream::nextRecord()
{
    checkProgress();
    if (state == State::pushedBack) {
        state = State::loaded;
        return true;
    }
    record.clear();
    if (!takeRecordStart(record.first())) return false;
    record.keepFirst();
    state = State::firstGroup;
    return true;
}

const DXFRecord& DXFStream::readRecord()
{
    if (state == State::positioned) throw std::runtime_error("Invalid internal state for DXF Stream");
    if (state == State::firstGroup) {
        appendGroups(record);
        state = State::loaded;
    }
    return record;
}

void DXFStream::seek(const DXFPosition& position) noexcept
{
    here = position;
    state = State::positioned;
}

}   // namespace belvor
