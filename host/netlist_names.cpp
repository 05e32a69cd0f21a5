#include "netlist_names.h"

NETLIST_NAMES::NETLIST_NAMES()
{
    add(std::string_view());
}

NETLIST_NAME NETLIST_NAMES::add(std::string_view text)
{
    const auto found = m_numbers.find(text);
    if (found != m_numbers.end())
        return found->second;
    const auto name = static_cast<NETLIST_NAME>(m_texts.size());
    m_texts.emplace_back(text);
    m_numbers.emplace(m_texts.back(), name);
    return name;
}

NETLIST_NAME NETLIST_NAMES::find(std::string_view text) const
{
    const auto found = m_numbers.find(text);
    return found == m_numbers.end() ? NONE : found->second;
}

std::string_view NETLIST_NAMES::get(NETLIST_NAME name) const
{
    return name == NONE ? std::string_view() : std::string_view(m_texts[name]);
}

std::uint32_t NETLIST_NAMES::size() const
{
    return static_cast<std::uint32_t>(m_texts.size());
}
