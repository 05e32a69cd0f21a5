#include "tolv_icon.h"

#include "tolv_lazy_icon_engine.h"
#include "tolv_mem.h"

#include <QMap>
#include <QSize>

TOLV_MEM_INITIALIZER();

namespace
{
/// How the files of a row make up its icon.
enum ICON_FORM
{
    ONE,        ///< one file
    OFF_ON,     ///< one file for each state
    SIZES_32_48 ///< one file for each of two sizes
};

struct ICON_ROW
{
    const char* name;
    ICON_FORM form;
    const char* first_file;
    const char* second_file; ///< empty where there is one file
};

constexpr ICON_ROW ICON_ROWS[] = {
#define TOLV_ICON_ROW(enumerator, form, first_file, second_file) {#enumerator, form, first_file, second_file},
#include "tolv_icon_table.def"
#undef TOLV_ICON_ROW
};

/// Comparison of texts at compile time.
constexpr bool is_less(const char* a, const char* b)
{
    while (*a != '\0' && *a == *b)
    {
        ++a;
        ++b;
    }
    return *a < *b;
}

/// Whether the rows stand in ASCII order.
constexpr bool is_in_order()
{
    for (int i = 1; i < TOLV_ICON_COUNT; ++i)
    {
        if (!is_less(ICON_ROWS[i - 1].name, ICON_ROWS[i].name))
            return false;
    }
    return true;
}
static_assert(is_in_order(), "the icons stand in the ASCII order of their names");

/// The row of an icon; null for a value that is no icon's.
const ICON_ROW* find_row(TOLV_ICON_ENUM icon)
{
    return icon >= 1 && icon <= TOLV_ICON_COUNT ? &ICON_ROWS[icon - 1] : nullptr;
}

QIcon make_icon(const ICON_ROW& row)
{
    const QString first_file = QString::fromLatin1(row.first_file);
    QIcon icon(new TOLV_LAZY_ICON_ENGINE);
    switch (row.form)
    {
    case ONE:
        icon.addFile(first_file, QSize(), QIcon::Normal, QIcon::Off);
        break;
    case OFF_ON:
        icon.addFile(first_file, QSize(), QIcon::Normal, QIcon::Off);
        icon.addFile(QString::fromLatin1(row.second_file), QSize(), QIcon::Normal, QIcon::On);
        break;
    case SIZES_32_48:
        icon.addFile(first_file, QSize(32, 32), QIcon::Normal, QIcon::Off);
        icon.addFile(QString::fromLatin1(row.second_file), QSize(48, 48), QIcon::Normal, QIcon::Off);
        break;
    }
    return icon;
}

/// The icon of a type of files.
TOLV_ICON_ENUM find_file_type_icon(FIO_FILE_TYPE type)
{
    switch (type)
    {
    case FIO_FILE_TYPE_VERILOG:
        return TOLV_DESIGN_UNITS_V_ICON;
    case FIO_FILE_TYPE_SYSTEMVERILOG:
        return TOLV_DESIGN_UNITS_SV_ICON;
    case FIO_FILE_TYPE_VERILOG_INCLUDE:
    case FIO_FILE_TYPE_C_HEADER:
        return TOLV_INC_FILE_ICON;
    case FIO_FILE_TYPE_VHDL:
        return TOLV_DESIGN_UNITS_VHD_ICON;
    case FIO_FILE_TYPE_EDIF:
        return TOLV_DESIGN_UNITS_EDIF_ICON;
    case FIO_FILE_TYPE_BLIF:
        return TOLV_NETLIST_FILE_ICON;
    case FIO_FILE_TYPE_JSON_NETLIST:
        return TOLV_DESIGN_UNITS_JSON_ICON;
    case FIO_FILE_TYPE_PLACED_NETLIST:
        return TOLV_DESIGN_UNITS_PLACED_ICON;
    case FIO_FILE_TYPE_SCHEMATIC:
        return TOLV_DESIGN_UNITS_SCHEMATIC_ICON;
    case FIO_FILE_TYPE_STATE_MACHINE:
        return TOLV_DESIGN_UNITS_SMF_ICON;
    case FIO_FILE_TYPE_BLOCK_DIAGRAM:
        return TOLV_DESIGN_UNITS_BDF_ICON;
    case FIO_FILE_TYPE_QUALIFIED_IP:
        return TOLV_DESIGN_UNITS_QIP_ICON;
    case FIO_FILE_TYPE_SYSTEM_DESIGN:
        return TOLV_DESIGN_UNITS_SYSTEM_ICON;
    case FIO_FILE_TYPE_CONSTRAINTS:
        return TOLV_SDC_FILE_ICON;
    case FIO_FILE_TYPE_PIN_CONSTRAINTS:
        return TOLV_PIN_FILE_ICON;
    case FIO_FILE_TYPE_TCL_SCRIPT:
        return TOLV_TCL_FILE_ICON;
    case FIO_FILE_TYPE_SETTINGS:
        return TOLV_SETTINGS_FILE_ICON;
    case FIO_FILE_TYPE_PROJECT:
        return TOLV_PROJECT_FILE_ICON;
    case FIO_FILE_TYPE_MEMORY_HEX:
        return TOLV_HEX_FILE_ICON;
    case FIO_FILE_TYPE_MEMORY_INIT:
        return TOLV_MEMORY_INIT_FILE_ICON;
    case FIO_FILE_TYPE_WAVEFORM:
        return TOLV_WAVEFORM_FILE_ICON;
    case FIO_FILE_TYPE_VALUE_CHANGE_DUMP:
        return TOLV_VCD_FILE_ICON;
    case FIO_FILE_TYPE_SIGNAL_PROBE:
        return TOLV_SIGNAL_PROBE_FILE_ICON;
    case FIO_FILE_TYPE_BITSTREAM:
        return TOLV_BITSTREAM_FILE_ICON;
    case FIO_FILE_TYPE_PROGRAMMING:
        return TOLV_PROGRAMMING_FILE_ICON;
    case FIO_FILE_TYPE_C_SOURCE:
        return TOLV_C_FILE_ICON;
    case FIO_FILE_TYPE_CPP_SOURCE:
        return TOLV_CPP_FILE_ICON;
    case FIO_FILE_TYPE_CPP_HEADER:
        return TOLV_CPP_INC_FILE_ICON;
    case FIO_FILE_TYPE_REPORT:
        return TOLV_REPORT_FILE_ICON;
    case FIO_FILE_TYPE_LOG:
    case FIO_FILE_TYPE_TEXT:
    case FIO_FILE_TYPE_HTML:
    case FIO_FILE_TYPE_XML:
    case FIO_FILE_TYPE_UNKNOWN:
    case FIO_FILE_TYPE_COUNT:
        break;
    }
    return TOLV_GENERIC_FILE_ICON;
}
} // namespace

QIcon tolv_get_icon(TOLV_ICON_ENUM icon)
{
    static QMap<TOLV_ICON_ENUM, QIcon> qicon_map;
    if (qicon_map.isEmpty())
    {
        for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
            qicon_map.insert(qicon_map.constEnd(), static_cast<TOLV_ICON_ENUM>(i), make_icon(ICON_ROWS[i - 1]));
    }
    return qicon_map.value(icon);
}

QStringList tolv_get_icon_file_names(TOLV_ICON_ENUM icon)
{
    const ICON_ROW* const row = find_row(icon);
    if (row == nullptr)
        return {};
    QStringList names(QString::fromLatin1(row->first_file));
    if (row->form != ONE)
        names << QString::fromLatin1(row->second_file);
    return names;
}

TOLV_ICON_ENUM tolv_get_icon_enum(const QString& name)
{
    static QMap<QString, TOLV_ICON_ENUM> enum_map;
    if (enum_map.isEmpty())
    {
        for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
            enum_map.insert(QString::fromLatin1(ICON_ROWS[i - 1].name), static_cast<TOLV_ICON_ENUM>(i));
    }
    return enum_map.value(name, TOLV_ICON_NONE);
}

QIcon tolv_get_file_type_icon(FIO_FILE_TYPE type)
{
    return tolv_get_icon(find_file_type_icon(type));
}
