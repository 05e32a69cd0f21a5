#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

/// A map from a resource enumerator to an object that it owns, for tables of a few hundred rows whose enumerators are
/// small numbers: the hash of an enumerator is the number itself, so a look-up is two indexings. The map keeps the
/// order in which rows were inserted. An enumerator of no row, whatever its number, is simply not found.
template <class RESOURCE, class DATA>
class TOLV_RESOURCE_MAP
{
public:
    using VALUE = std::pair<RESOURCE, std::unique_ptr<DATA>>;
    using ITERATOR = typename std::vector<VALUE>::const_iterator;

    /// Makes room for `count` rows.
    void reserve(std::size_t count)
    {
        m_values.reserve(count);
    }

    /// Adds a row; where the enumerator is in the map already nothing changes, and `second` is false. Invalidates
    /// iterators, never pointers to the objects.
    std::pair<ITERATOR, bool> insert(RESOURCE resource, std::unique_ptr<DATA> data)
    {
        const ITERATOR present = find(resource);
        if (present != end())
            return {present, false};
        const auto number = static_cast<std::size_t>(resource);
        if (number >= m_places.size())
            m_places.resize(number + 1, 0);
        m_values.emplace_back(resource, std::move(data));
        m_places[number] = static_cast<std::uint16_t>(m_values.size());
        return {end() - 1, true};
    }

    /// The row, or end().
    ITERATOR find(RESOURCE resource) const
    {
        const auto number = static_cast<std::size_t>(static_cast<unsigned>(resource));
        const unsigned place = number < m_places.size() ? m_places[number] : 0;
        return place != 0 ? m_values.begin() + (place - 1) : m_values.end();
    }

    ITERATOR begin() const
    {
        return m_values.begin();
    }

    ITERATOR end() const
    {
        return m_values.end();
    }

    std::size_t size() const
    {
        return m_values.size();
    }

    void clear()
    {
        m_values.clear();
        m_places.clear();
    }

private:
    std::vector<VALUE> m_values;
    std::vector<std::uint16_t> m_places; ///< by number: 1 + index in m_values, 0 for none
};
