#pragma once

#include "tolv_export.h"

#include <QList>
#include <QMetaType>
#include <QVariant>

#include <string>

/// Shape of a named object. The library passes every number through unchanged, also those that have no name here.
enum TOLV_INSTANCE_NAME_TYPE : int
{
    TOLV_INSTANCE_NAME_TYPE_SCALAR = 0,              ///< a single object, no dimension counts
    TOLV_INSTANCE_NAME_TYPE_ARRAY = 1,               ///< the first dimension counts
    TOLV_INSTANCE_NAME_TYPE_TWO_DIMENSION_ARRAY = 2, ///< both dimensions count
    TOLV_INSTANCE_NAME_TYPE_PLAIN = 3,               ///< the name as it stands; the type of a new record
};

/// The name of an instance, net or pin of a design with its range, as tools hand it to each other by copy, paste and
/// drag. The library carries it and gives its fields no meaning.
///
/// The fields are public. Name, type, flag, number and dimensions travel in TOLV_DATA_TRANSFER_MANAGER's payload; the
/// three extra fields stay in the process. `m_value` stays with the very object it was set on: a copy has none.
class TOLV_EXPORT TOLV_INSTANCE_NAME
{
public:
    TOLV_INSTANCE_NAME();
    /// All fields but the value. A dimension is a range of indexes, as the tools understand it.
    TOLV_INSTANCE_NAME(const std::string& name, TOLV_INSTANCE_NAME_TYPE type, bool flag, unsigned int number,
                       unsigned int first_low, unsigned int first_high, unsigned int second_low,
                       unsigned int second_high, unsigned int extra_number, const std::string& extra_1,
                       const std::string& extra_2);
    ~TOLV_INSTANCE_NAME();
    TOLV_INSTANCE_NAME(const TOLV_INSTANCE_NAME& other);
    /// Takes over all fields but the value. The value of the target is invalid behind it.
    TOLV_INSTANCE_NAME& operator=(const TOLV_INSTANCE_NAME& other);

    /// Back to a new record.
    void clear();

    /// Sets the type and both dimensions.
    void set_dimension(TOLV_INSTANCE_NAME_TYPE type, unsigned int first_low, unsigned int first_high,
                       unsigned int second_low, unsigned int second_high);
    /// Reads a dimension.
    void get_first_dimension(unsigned int& low, unsigned int& high) const;
    void get_second_dimension(unsigned int& low, unsigned int& high) const;

    /// A tool's own addition; neither copied nor streamed. Invalid in a new record: a QVariant made as QVariant::UserType
    /// would hold whatever type the process has registered first, or warn if there is none.
    QVariant m_value;
    TOLV_INSTANCE_NAME_TYPE m_type = TOLV_INSTANCE_NAME_TYPE_PLAIN; ///< shape of the object
    std::string m_name;                                             ///< the name, in the local 8-bit encoding
    unsigned int m_number = 0;                                      ///< a tool's number for the object
    unsigned int m_first_dimension_low = 0;                         ///< first dimension, from
    unsigned int m_first_dimension_high = 0;                        ///< first dimension, to
    unsigned int m_second_dimension_low = 0;                        ///< second dimension, from
    unsigned int m_second_dimension_high = 0;                       ///< second dimension, to
    bool m_flag = false;                                            ///< a tool's mark
    unsigned int m_extra_number = 0;                                ///< not streamed
    std::string m_extra_string_1;                                   ///< not streamed
    std::string m_extra_string_2;                                   ///< not streamed
};

/// Instance names in a fixed order, duplicates included. The class is a metatype under its own name, so that a whole
/// list fits into one QVariant.
class TOLV_EXPORT TOLV_INSTANCE_NAME_LIST
{
public:
    TOLV_INSTANCE_NAME_LIST();
    ~TOLV_INSTANCE_NAME_LIST();
    TOLV_INSTANCE_NAME_LIST(const TOLV_INSTANCE_NAME_LIST& other);
    TOLV_INSTANCE_NAME_LIST& operator=(const TOLV_INSTANCE_NAME_LIST& other);

    /// Appends a copy of the record.
    void insert(const TOLV_INSTANCE_NAME& instance_name);

    /// Removes all records. The value stays as it is.
    void clear();

    /// The records, in the order in which they were inserted.
    const QList<TOLV_INSTANCE_NAME>& get_list() const;

    QVariant m_value; ///< a tool's own addition to the list; invalid in a new one, as in a record; not streamed

private:
    QList<TOLV_INSTANCE_NAME> m_list;
};

Q_DECLARE_METATYPE(TOLV_INSTANCE_NAME_LIST)
