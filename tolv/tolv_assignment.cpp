#include "tolv_assignment.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

// ---- One assignment -------------------------------------------------------------------------------------------------

TOLV_ASSIGNMENT::TOLV_ASSIGNMENT() = default;

TOLV_ASSIGNMENT::~TOLV_ASSIGNMENT() = default;

// The value is left out on purpose: it belongs to the object that a tool set it on.
TOLV_ASSIGNMENT::TOLV_ASSIGNMENT(const TOLV_ASSIGNMENT& other)
    : m_field_1(other.m_field_1), m_field_2(other.m_field_2), m_field_3(other.m_field_3), m_field_4(other.m_field_4),
      m_flag(other.m_flag), m_field_5(other.m_field_5), m_field_6(other.m_field_6), m_field_7(other.m_field_7)
{
}

TOLV_ASSIGNMENT& TOLV_ASSIGNMENT::operator=(const TOLV_ASSIGNMENT& other)
{
    if (this == &other)
        return *this;
    m_value.clear();
    m_field_1 = other.m_field_1;
    m_field_2 = other.m_field_2;
    m_field_3 = other.m_field_3;
    m_field_4 = other.m_field_4;
    m_flag = other.m_flag;
    m_field_5 = other.m_field_5;
    m_field_6 = other.m_field_6;
    m_field_7 = other.m_field_7;
    return *this;
}

void TOLV_ASSIGNMENT::reset()
{
    for (QString* const field : {&m_field_1, &m_field_2, &m_field_3, &m_field_4, &m_field_5, &m_field_6, &m_field_7})
        *field = QString();
    m_flag = true;
}

// ---- The list -------------------------------------------------------------------------------------------------------

TOLV_ASSIGNMENT_LIST::TOLV_ASSIGNMENT_LIST() = default;

TOLV_ASSIGNMENT_LIST::~TOLV_ASSIGNMENT_LIST() = default;

TOLV_ASSIGNMENT_LIST::TOLV_ASSIGNMENT_LIST(const TOLV_ASSIGNMENT_LIST& other) = default;

TOLV_ASSIGNMENT_LIST& TOLV_ASSIGNMENT_LIST::operator=(const TOLV_ASSIGNMENT_LIST& other) = default;

void TOLV_ASSIGNMENT_LIST::insert(const TOLV_ASSIGNMENT& assignment)
{
    m_list.append(assignment);
}

void TOLV_ASSIGNMENT_LIST::clear()
{
    m_list.clear();
}

const QList<TOLV_ASSIGNMENT>& TOLV_ASSIGNMENT_LIST::get_list() const
{
    return m_list;
}
