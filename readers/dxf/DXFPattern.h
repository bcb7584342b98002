#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace belvor {

/// Whether it is worth making a pattern again: less and less often while hardly a record is like the last
/// ones.
class DXFPatternTries {
public:
    bool now() noexcept
    {
        if (toPass == 0) return true;
        --toPass;
        return false;
    }
    /// So many records were like the pattern.
    void ended(std::uint64_t repeats) noexcept
    {
        constexpr std::uint64_t few = 4;
        constexpr unsigned mostVain = 6;
        vain = repeats < few ? std::min(vain + 1, mostVain) : 0;
        toPass = vain == 0 ? 0 : 1u << vain;
    }

private:
    unsigned toPass = 0;   // before one is made again
    unsigned vain = 0;     // in a row
};

/// The bytes of a record as a pattern for the records after it: drawings come in runs of records that differ
/// in their numbers alone, and in their handles. Between such values lie fixed bytes, with codes, line ends
/// and values of other kinds. The bytes are the file's.
class DXFPattern {
public:
    /// What follows the fixed bytes of a part.
    enum class Value : std::uint8_t { none, real, integer, text };

    struct Part {
        std::string_view bytes;
        Value value = Value::none;
        std::size_t slot = 0;   ///< Where a number goes.

        /// Whether they stand at `at`, where at least eight bytes more follow.
        bool startsAt(const char* at) const noexcept
        {
            std::uint64_t difference = (wordAt(at) ^ word) & mask;
            for (std::size_t next = sizeof word; next < bytes.size(); next += sizeof word) {
                const std::size_t here = std::min(next, bytes.size() - sizeof word);
                difference |= wordAt(at + here) ^ wordAt(bytes.data() + here);
            }
            return difference == 0;
        }

        /// Where the number ends that starts at `from`, if it is written like the last one, lastNumber();
        /// else null. Neighbours have coordinates in common. As many bytes follow as for plain::takeReal().
        const char* endOfSameNumber(const char* from) const noexcept
        {
            if (length < 7 || length > 15 || wordAt(from) != wordAt(text)) return nullptr;
            const std::ptrdiff_t rest = length - 7;   // up to the character behind it
            return wordAt(from + rest) == wordAt(text + rest) ? from + length : nullptr;
        }
        double lastNumber() const noexcept { return number; }
        /// A number that starts at `at`; endOfValue() follows.
        void keepNumber(const char* at, double size) noexcept
        {
            text = at;
            number = size;
        }

        /// `to`, where the value ends that starts at `from`. Most values are as long as the last one in their
        /// place: that length is read where it was kept, so that a processor which foresees it goes on behind
        /// the value while it still works on it.
        const char* endOfValue(const char* from, const char* to) noexcept
        {
            const volatile std::ptrdiff_t& kept = length;   // else it would be known to be to - from
            if (kept != to - from) length = to - from;
            return from + kept;
        }

    private:
        friend class DXFPattern;
        static std::uint64_t wordAt(const char* at) noexcept
        {
            std::uint64_t word;
            std::memcpy(&word, at, sizeof word);
            return word;
        }
        std::uint64_t word = 0, mask = 0;   // of the first bytes
        std::ptrdiff_t length = 0;          // of the last value
        const char* text = nullptr;         // the same, of a number
        double number = 0;
    };

    /// Begins again, with a record whose first bytes are at `start`.
    void begin(const char* start)
    {
        partsOfRecord.clear();
        fixed = start;
    }
    /// The fixed bytes go up to the value of a group, which ends at `valueEnd`.
    void add(std::string_view value, Value kind, std::size_t slot = 0)
    {
        addFixed(value.data(), kind, slot);
        fixed = value.data() + value.size();
    }
    /// The record ends at `end`; the code after it, up to `codeEnd`, belongs to the pattern.
    void finish(const char* end, const char* codeEnd)
    {
        lengthOfEnd = static_cast<std::size_t>(end - fixed);
        addFixed(codeEnd, Value::none, 0);
    }

    std::vector<Part>& parts() noexcept { return partsOfRecord; }
    /// Of the last part, without the code after the record.
    std::size_t endLength() const noexcept { return lengthOfEnd; }

private:
    void addFixed(const char* to, Value kind, std::size_t slot)
    {
        Part& part = partsOfRecord.emplace_back();
        part.bytes = {fixed, static_cast<std::size_t>(to - fixed)};
        part.value = kind;
        part.slot = slot;
        const std::size_t first = std::min(part.bytes.size(), sizeof part.word);
        std::memcpy(&part.word, part.bytes.data(), first);
        std::memset(&part.mask, 0xFF, first);
    }

    std::vector<Part> partsOfRecord;
    const char* fixed = nullptr;   // where those of the next part start
    std::size_t lengthOfEnd = 0;
};

}   // namespace belvor
