#include "session/LoadRemark.h"

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

/// Why a model has no surfaces: what the reader warned of, or the most frequent reason.
std::string whyEmpty(const Account& account)
{
    if (!account.warnings.empty()) return account.warnings.front();
    const std::vector<Skipped> skipped = skippedOf(account);
    if (skipped.empty()) return textOf(Text::noSurfacesReason);
    return filledText(Text::emptyReason, {groupedNumber(skipped[0].count), groupedNumber(account.read()),
                                          reasonText(skipped[0].reason), skipped[0].type});
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

std::string loadRemark(const Account& account, const Model& model, bool curvesShown)
{
    if (model.facetCount() == 0 && model.curveCount() == 0) {
        const std::vector<Skipped> most = skippedOf(account);
        const bool lines = !most.empty() && most[0].reason == static_cast<std::size_t>(SkipReason::noSurface);
        return lines && !curvesShown && account.warnings.empty()
                   ? textOf(Text::linesRemark)
                   : filledText(Text::emptyRemark, {whyEmpty(account)});
    }
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
