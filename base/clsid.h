#pragma once

#include "base_export.h"

#include <cstdint>
#include <cstring>

/// The identifier of a document class across the suite: a plain value of 16 bytes, passed by value.
struct _GUID
{
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];
};
using CLSID = _GUID;
static_assert(sizeof(CLSID) == 16, "a class identifier has 16 bytes");

/// Byte-wise equality.
inline bool operator==(const _GUID& a, const _GUID& b)
{
    return std::memcmp(&a, &b, sizeof(_GUID)) == 0;
}
inline bool operator!=(const _GUID& a, const _GUID& b)
{
    return !(a == b);
}
/// A total order, so that identifiers can be keys of ordered containers.
inline bool operator<(const _GUID& a, const _GUID& b)
{
    return std::memcmp(&a, &b, sizeof(_GUID)) < 0;
}

/// All bytes zero: no document class.
TOLV_BASE_EXPORT extern const CLSID FIO_CLSID_NULL;

/// Document classes of the suite's tools, all different.
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_CONSTRAINT_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_PACKAGE_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_FLOORPLAN_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_PROPERTY_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_NETLIST_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_NETLIST_MAP_VIEW_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_NETLIST_TIMING_VIEW_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_WAVE_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_BLOCK_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_STATE_DEFAULT_DOC;
TOLV_BASE_EXPORT extern const CLSID TOLF_CLSID_ANALYSIS_DEFAULT_DOC;
