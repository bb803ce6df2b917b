// Finds a small part of a list that still fails: leaves out ever smaller pieces of it, halves at
// first and single elements at last, as long as what remains fails.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orx::test {

/// `fails` says whether a list fails; `list` does. The order of the elements stays.
template <typename Element, typename Fails>
[[nodiscard]] std::vector<Element> shrink(std::vector<Element> list, const Fails& fails) {
    const auto without = [](const auto& whole, std::size_t from, std::size_t count) {
        auto rest = whole;
        const auto first = rest.begin() + static_cast<std::ptrdiff_t>(from);
        rest.erase(first, first + static_cast<std::ptrdiff_t>(std::min(count, rest.size() - from)));
        return rest;
    };
    for (std::size_t piece = (list.size() + 1) / 2; piece > 0;) {
        bool shorter = false;
        for (std::size_t from = 0; from < list.size();) {
            auto rest = without(list, from, piece);
            if (fails(rest)) {
                list = std::move(rest);
                shorter = true;
            } else {
                from += piece;
            }
        }
        if (piece == 1 && !shorter) break;  // no single element is left out any more
        piece = piece == 1 ? 1 : piece / 2;
    }
    return list;
}

}  // namespace orx::test
