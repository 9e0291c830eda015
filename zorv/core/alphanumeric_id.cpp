#include "zorv/core/alphanumeric_id.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>

namespace {

/// The bases of the prefixes of one character type.
template <class Char>
class PrefixTable {
    using View = std::basic_string_view<Char>;

  public:
    unsigned int Id(View name) {
        constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();
        constexpr std::size_t kUsualLength = 64;
        Char usual[kUsualLength];
        std::basic_string<Char> unusual;
        Char* prefix = usual;
        if (name.size() > kUsualLength) {
            unusual.resize(name.size());
            prefix = unusual.data();
        }

        std::size_t length = 0;
        std::uint64_t number = 0;
        for (const Char c : name) {
            if (c >= '0' && c <= '9') {
                number = number * 10 + static_cast<std::uint64_t>(c - '0');
                if (number > kLargest) number = kLargest;
            } else {
                prefix[length++] = c;
            }
        }
        const auto id = static_cast<std::uint32_t>(number);
        return length == 0 ? id : id + Base(View(prefix, length));
    }

  private:
    std::uint32_t Base(View prefix) {
        const auto place = bases.lower_bound(prefix);
        if (place != bases.end() && place->first == prefix) return place->second;
        const std::uint32_t base = next;
        next += kStep;
        bases.emplace_hint(place, prefix, base);
        return base;
    }

    static constexpr std::uint32_t kStep = 1000;
    std::map<std::basic_string<Char>, std::uint32_t, std::less<>> bases;
    std::uint32_t next = kStep;
};

}  // namespace

unsigned int zorv::detail::IdFromName(std::string_view name) {
    static PrefixTable<char> table;
    return table.Id(name);
}

unsigned int GetIdFromAlphaNumericString(const char* text) {
    return text ? zorv::detail::IdFromName(text) : 0;
}

unsigned int GetIdFromAlphaNumericString(const wchar_t* text) {
    static PrefixTable<wchar_t> table;
    return text ? table.Id(text) : 0;
}
