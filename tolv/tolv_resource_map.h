#pragma once

#include <memory>
#include <utility>
#include <vector>

/// A map from a resource enumerator to an object that it owns, for tables of a few hundred rows whose enumerators are
/// small numbers: the hash of an enumerator is the number itself, and a look-up is an indexing. An enumerator of no
/// row, whatever its number, is simply not found. The order of the map is that of the numbers.
template <class RESOURCE, class DATA>
class TOLV_RESOURCE_MAP
{
public:
    using VALUE = std::pair<RESOURCE, std::unique_ptr<DATA>>;
    using ITERATOR = const VALUE*;

    /// Adds a row; where the enumerator is in the map already nothing changes, and `second` is false. Invalidates
    /// iterators, never pointers to the objects.
    std::pair<ITERATOR, bool> insert(RESOURCE resource, std::unique_ptr<DATA> data)
    {
        const auto number = static_cast<std::size_t>(static_cast<unsigned>(resource));
        if (number >= m_slots.size())
            m_slots.resize(number + 1);
        VALUE& slot = m_slots[number];
        const bool is_new = slot.second == nullptr;
        if (is_new)
            slot = VALUE(resource, std::move(data));
        return {&slot, is_new};
    }

    /// The row, or end().
    ITERATOR find(RESOURCE resource) const
    {
        const auto number = static_cast<std::size_t>(static_cast<unsigned>(resource));
        return number < m_slots.size() && m_slots[number].second != nullptr ? &m_slots[number] : nullptr;
    }

    /// What find() gives for an enumerator of no row.
    ITERATOR end() const
    {
        return nullptr;
    }

    /// Calls `action(object)` for each row.
    template <class ACTION>
    void for_each(ACTION action) const
    {
        for (const VALUE& slot : m_slots)
        {
            if (slot.second != nullptr)
                action(*slot.second);
        }
    }

    /// Deletes all rows.
    void clear()
    {
        m_slots.clear();
    }

private:
    std::vector<VALUE> m_slots; ///< by number; a null object for a number of no row
};
