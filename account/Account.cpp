#include "account/Account.h"

#include <algorithm>
#include <utility>

namespace belvor {
namespace {

bool isTypeCharacter(char c) noexcept { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; }

}   // namespace

bool isRecordType(std::string_view text) noexcept
{
    return text.size() >= 2 && text.size() <= 64 && std::all_of(text.begin(), text.end(), isTypeCharacter);
}

std::uint64_t EntityCount::skippedInAll() const noexcept
{
    std::uint64_t sum = 0;
    for (const std::uint64_t count : skipped) sum += count;
    return sum;
}

EntityCount& Account::entity(std::string_view type)
{
    constexpr std::string_view unreadable = "?";
    if (!isRecordType(type)) type = unreadable;
    if (const auto found = entities.find(type); found != entities.end()) return found->second;
    if (entities.size() >= maxTypes) type = unreadable;
    return entities[std::string(type)];
}

void Account::repair(std::int64_t position, std::string_view record, std::string text)
{
    ++repairCount;
    if (repairs.size() < maxRepairs) repairs.push_back({position, std::string(record), std::move(text)});
}

void Account::warn(std::string text)
{
    if (std::find(warnings.begin(), warnings.end(), text) == warnings.end())
        warnings.push_back(std::move(text));
}

std::uint64_t Account::read() const noexcept
{
    std::uint64_t sum = 0;
    for (const auto& [type, count] : entities) sum += count.read;
    return sum;
}

std::uint64_t Account::skipped() const noexcept
{
    std::uint64_t sum = 0;
    for (const auto& [type, count] : entities) sum += count.skippedInAll();
    return sum;
}

}   // namespace belvor
