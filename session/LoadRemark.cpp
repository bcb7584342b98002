#include "session/LoadRemark.h"

#include "readers/dxf/DXFDispatch.h"
#include "resources/Texts.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace belvor {
namespace {

struct Skipped {
    std::string_view type;
    std::size_t reason;
    std::uint64_t count;
};

/// The most frequent first.
std::vector<Skipped> skippedOf(const Account& account)
{
    std::vector<Skipped> all;
    for (const auto& [type, counts] : account.entities)
        for (std::size_t reason = 0; reason < skipReasonCount; ++reason)
            if (counts.skipped[reason] != 0) all.push_back({type, reason, counts.skipped[reason]});
    std::stable_sort(all.begin(), all.end(),
                     [](const Skipped& a, const Skipped& b) { return a.count > b.count; });
    return all;
}

std::string reasonText(std::size_t reason)
{
    return textOf(textAfter(Text::skippedFaulty, static_cast<int>(reason)));
}

/// What the user can do about a row.
enum class Remedy { none, mend, showLines, modernReading };

Remedy remedyOf(const Skipped& row, const ReadingOptions& options) noexcept
{
    switch (static_cast<SkipReason>(row.reason)) {
    case SkipReason::layerFrozen:
    case SkipReason::layerOff:
    case SkipReason::blockInAnotherFile:
    case SkipReason::blockUnknown: return Remedy::mend;
    case SkipReason::noSurface:
        return !options.curves && mayBeCurve(row.type) ? Remedy::showLines : Remedy::none;
    case SkipReason::typeNotDrawn:
        if (const DXFHandler* const drawn = handlerOf(row.type, options.rules, true))
            return drawn->onlyCurves && !options.curves ? Remedy::showLines : Remedy::none;
        return handlerOf(row.type, ReadingRules::modern, true) ? Remedy::modernReading : Remedy::none;
    default: return Remedy::none;
    }
}

/// Why a model has nothing to draw: what the reader warned of; else the most frequent reason that the user
/// can do something about; else the most frequent one.
std::string emptyRemark(const Account& account, const ReadingOptions& options)
{
    if (!account.warnings.empty()) return filledText(Text::emptyRemark, {account.warnings.front()});
    const std::vector<Skipped> rows = skippedOf(account);
    if (rows.empty()) return filledText(Text::emptyRemark, {textOf(Text::noSurfacesReason)});
    const auto acts = [&](const Skipped& row) { return remedyOf(row, options) != Remedy::none; };
    const auto found = std::find_if(rows.begin(), rows.end(), acts);
    const Skipped& told = found == rows.end() ? rows.front() : *found;
    const Remedy remedy = remedyOf(told, options);
    if (remedy == Remedy::showLines) return textOf(Text::linesRemark);
    const std::string text =
        filledText(Text::emptyRemark,
                   {filledText(Text::emptyReason, {groupedNumber(told.count), groupedNumber(account.read()),
                                                   reasonText(told.reason), told.type})});
    return remedy == Remedy::modernReading ? filledText(Text::modernMayShow, {text}) : text;
}

}   // namespace

std::string groupedNumber(std::uint64_t count)
{
    const std::string digits = std::to_string(count);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i != 0 && (digits.size() - i) % 3 == 0) text += ',';
        text += digits[i];
    }
    return text;
}

std::string loadRemark(const Account& account, const Model& model, const ReadingOptions& options)
{
    if (model.facetCount() == 0 && model.curveCount() == 0) return emptyRemark(account, options);
    const std::uint64_t skipped = account.skipped();
    const std::string repairs = groupedNumber(account.repairCount);
    std::string text;
    if (skipped != 0)
        text = filledText(Text::skippedRemark, {groupedNumber(skipped), groupedNumber(account.read())});
    if (account.repairCount != 0)
        text = text.empty() ? filledText(Text::onlyRepairedRemark, {repairs})
                            : filledText(Text::repairedRemark, {text, repairs});
    if (text.empty() && !account.warnings.empty()) text = account.warnings.front();
    return text;
}

std::string accountTable(const Account& account)
{
    std::string table;
    for (const Skipped& row : skippedOf(account))
        table +=
            std::string(row.type) + '\t' + reasonText(row.reason) + '\t' + groupedNumber(row.count) + "\r\n";
    for (const Repair& repair : account.repairs)
        table += repair.record + '\t' + repair.text + '\t' + std::to_string(repair.position) + "\r\n";
    return table;
}

}   // namespace belvor
