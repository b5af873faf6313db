#pragma once

#include "platform/Locale.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// The order of names as a user counts: runs of digits by their value ("z2" before "z10"), all else as the language
/// sorts.
class NaturalOrder {
public:
    explicit NaturalOrder(const Locale& locale);

    /// Bytes in whose order names sort.
    std::string KeyOf(std::string_view name) const;

    /// `nameOf` gives the name of an item. What has the same key stays in its order. The language is asked once an item
    /// and not once a comparison, of which ten thousand names take a hundred thousand.
    template <class Item, class NameOf>
    void Sort(std::vector<Item>& items, NameOf nameOf, bool ascending = true) const
    {
        std::vector<std::pair<std::string, std::size_t>> keys;
        keys.reserve(items.size());
        for (const Item& item : items)
            keys.emplace_back(KeyOf(std::invoke(nameOf, item)), keys.size());
        std::ranges::stable_sort(keys, [ascending](const auto& a, const auto& b) {
            return ascending ? a.first < b.first : b.first < a.first;
        });
        std::vector<Item> sorted;
        sorted.reserve(items.size());
        for (const auto& [key, at] : keys)
            sorted.push_back(std::move(items[at]));
        items = std::move(sorted);
    }

private:
    const Locale& locale;
    char digits; ///< what the keys of texts that begin with a digit begin with
};

} // namespace platform
