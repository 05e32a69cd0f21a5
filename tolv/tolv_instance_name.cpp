#include "tolv_instance_name.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

// ---- One name -------------------------------------------------------------------------------------------------------

TOLV_INSTANCE_NAME::TOLV_INSTANCE_NAME() = default;

TOLV_INSTANCE_NAME::TOLV_INSTANCE_NAME(const std::string& name, TOLV_INSTANCE_NAME_TYPE type, bool flag,
                                       unsigned int number, unsigned int first_low, unsigned int first_high,
                                       unsigned int second_low, unsigned int second_high, unsigned int extra_number,
                                       const std::string& extra_1, const std::string& extra_2)
    : m_type(type), m_name(name), m_number(number), m_first_dimension_low(first_low),
      m_first_dimension_high(first_high), m_second_dimension_low(second_low), m_second_dimension_high(second_high),
      m_flag(flag), m_extra_number(extra_number), m_extra_string_1(extra_1), m_extra_string_2(extra_2)
{
}

TOLV_INSTANCE_NAME::~TOLV_INSTANCE_NAME() = default;

// The value is left out on purpose: it belongs to the object that a tool set it on.
TOLV_INSTANCE_NAME::TOLV_INSTANCE_NAME(const TOLV_INSTANCE_NAME& other)
    : m_type(other.m_type), m_name(other.m_name), m_number(other.m_number),
      m_first_dimension_low(other.m_first_dimension_low), m_first_dimension_high(other.m_first_dimension_high),
      m_second_dimension_low(other.m_second_dimension_low), m_second_dimension_high(other.m_second_dimension_high),
      m_flag(other.m_flag), m_extra_number(other.m_extra_number), m_extra_string_1(other.m_extra_string_1),
      m_extra_string_2(other.m_extra_string_2)
{
}

TOLV_INSTANCE_NAME& TOLV_INSTANCE_NAME::operator=(const TOLV_INSTANCE_NAME& other)
{
    if (this == &other)
        return *this;
    m_value.clear();
    m_name = other.m_name;
    m_number = other.m_number;
    set_dimension(other.m_type, other.m_first_dimension_low, other.m_first_dimension_high, other.m_second_dimension_low,
                  other.m_second_dimension_high);
    m_flag = other.m_flag;
    m_extra_number = other.m_extra_number;
    m_extra_string_1 = other.m_extra_string_1;
    m_extra_string_2 = other.m_extra_string_2;
    return *this;
}

void TOLV_INSTANCE_NAME::clear()
{
    *this = TOLV_INSTANCE_NAME();
}

void TOLV_INSTANCE_NAME::set_dimension(TOLV_INSTANCE_NAME_TYPE type, unsigned int first_low, unsigned int first_high,
                                       unsigned int second_low, unsigned int second_high)
{
    m_type = type;
    m_first_dimension_low = first_low;
    m_first_dimension_high = first_high;
    m_second_dimension_low = second_low;
    m_second_dimension_high = second_high;
}

void TOLV_INSTANCE_NAME::get_first_dimension(unsigned int& low, unsigned int& high) const
{
    low = m_first_dimension_low;
    high = m_first_dimension_high;
}

void TOLV_INSTANCE_NAME::get_second_dimension(unsigned int& low, unsigned int& high) const
{
    low = m_second_dimension_low;
    high = m_second_dimension_high;
}

// ---- The list -------------------------------------------------------------------------------------------------------

TOLV_INSTANCE_NAME_LIST::TOLV_INSTANCE_NAME_LIST() = default;

TOLV_INSTANCE_NAME_LIST::~TOLV_INSTANCE_NAME_LIST() = default;

TOLV_INSTANCE_NAME_LIST::TOLV_INSTANCE_NAME_LIST(const TOLV_INSTANCE_NAME_LIST& other) = default;

TOLV_INSTANCE_NAME_LIST& TOLV_INSTANCE_NAME_LIST::operator=(const TOLV_INSTANCE_NAME_LIST& other) = default;

void TOLV_INSTANCE_NAME_LIST::insert(const TOLV_INSTANCE_NAME& instance_name)
{
    m_list.append(instance_name);
}

void TOLV_INSTANCE_NAME_LIST::clear()
{
    m_list.clear();
}

const QList<TOLV_INSTANCE_NAME>& TOLV_INSTANCE_NAME_LIST::get_list() const
{
    return m_list;
}
