#include "fio.h"

#include "msg_internal_error.h"

#include <array>
#include <cctype>

namespace
{
struct EXTENSION_ROW
{
    FIO_EXTENSION_TYPE extension;
    const char* text;
};

struct TYPE_ROW
{
    FIO_FILE_TYPE type;
    const char* name;
    int flags; ///< of FIO_FILE_TYPE_FLAG
    FIO_EDITOR_TYPE editor;
    std::array<FIO_EXTENSION_TYPE, 2> extensions; ///< the default one first, FIO_EXTENSION_NONE behind the last
};

struct FLAG_ROW
{
    FIO_FILE_TYPE_FLAG flag;
    const char* name;
};

// Row n describes value n; the first rows stand for the value 0.
// clang-format off
constexpr EXTENSION_ROW EXTENSIONS[] = {
    {FIO_EXTENSION_NONE, ""},
    {FIO_EXTENSION_V, ".v"},
    {FIO_EXTENSION_VH, ".vh"},
    {FIO_EXTENSION_SV, ".sv"},
    {FIO_EXTENSION_SVH, ".svh"},
    {FIO_EXTENSION_VHD, ".vhd"},
    {FIO_EXTENSION_VHDL, ".vhdl"},
    {FIO_EXTENSION_EDF, ".edf"},
    {FIO_EXTENSION_EDIF, ".edif"},
    {FIO_EXTENSION_BLIF, ".blif"},
    {FIO_EXTENSION_JSON, ".json"},
    {FIO_EXTENSION_SCH, ".sch"},
    {FIO_EXTENSION_SMF, ".smf"},
    {FIO_EXTENSION_BDF, ".bdf"},
    {FIO_EXTENSION_IP, ".ip"},
    {FIO_EXTENSION_SYS, ".sys"},
    {FIO_EXTENSION_SDC, ".sdc"},
    {FIO_EXTENSION_PCF, ".pcf"},
    {FIO_EXTENSION_TCL, ".tcl"},
    {FIO_EXTENSION_NSF, ".nsf"},
    {FIO_EXTENSION_NPF, ".npf"},
    {FIO_EXTENSION_HEX, ".hex"},
    {FIO_EXTENSION_MIF, ".mif"},
    {FIO_EXTENSION_VWF, ".vwf"},
    {FIO_EXTENSION_VCD, ".vcd"},
    {FIO_EXTENSION_FST, ".fst"},
    {FIO_EXTENSION_STP, ".stp"},
    {FIO_EXTENSION_ASC, ".asc"},
    {FIO_EXTENSION_BIN, ".bin"},
    {FIO_EXTENSION_BIT, ".bit"},
    {FIO_EXTENSION_C, ".c"},
    {FIO_EXTENSION_CPP, ".cpp"},
    {FIO_EXTENSION_CC, ".cc"},
    {FIO_EXTENSION_H, ".h"},
    {FIO_EXTENSION_HPP, ".hpp"},
    {FIO_EXTENSION_RPT, ".rpt"},
    {FIO_EXTENSION_LOG, ".log"},
    {FIO_EXTENSION_TXT, ".txt"},
    {FIO_EXTENSION_HTML, ".html"},
    {FIO_EXTENSION_HTM, ".htm"},
    {FIO_EXTENSION_XML, ".xml"},
};

constexpr TYPE_ROW TYPES[] = {
    {FIO_FILE_TYPE_UNKNOWN, "", 0, FIO_EDITOR_TYPE_NONE, {}},
    {FIO_FILE_TYPE_VERILOG, "Verilog HDL File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_V}},
    {FIO_FILE_TYPE_SYSTEMVERILOG, "SystemVerilog HDL File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_SV}},
    {FIO_FILE_TYPE_VERILOG_INCLUDE, "Verilog Include File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_VH, FIO_EXTENSION_SVH}},
    {FIO_FILE_TYPE_VHDL, "VHDL File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_VHD, FIO_EXTENSION_VHDL}},
    {FIO_FILE_TYPE_EDIF, "EDIF Netlist File", FIO_FILE_TYPE_FLAG_DESIGN | FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_EDF, FIO_EXTENSION_EDIF}},
    {FIO_FILE_TYPE_BLIF, "BLIF Netlist File", FIO_FILE_TYPE_FLAG_DESIGN | FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_BLIF}},
    {FIO_FILE_TYPE_JSON_NETLIST, "JSON Netlist File", FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_GRAPHIC, {FIO_EXTENSION_JSON}},
    {FIO_FILE_TYPE_PLACED_NETLIST, "Placed and Routed Netlist File", FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_GRAPHIC, {FIO_EXTENSION_JSON}},
    {FIO_FILE_TYPE_SCHEMATIC, "Schematic File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_GRAPHIC, {FIO_EXTENSION_SCH}},
    {FIO_FILE_TYPE_STATE_MACHINE, "State Machine File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_GRAPHIC, {FIO_EXTENSION_SMF}},
    {FIO_FILE_TYPE_BLOCK_DIAGRAM, "Block Diagram File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_GRAPHIC, {FIO_EXTENSION_BDF}},
    {FIO_FILE_TYPE_QUALIFIED_IP, "IP Variation File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_NONE, {FIO_EXTENSION_IP}},
    {FIO_FILE_TYPE_SYSTEM_DESIGN, "System Design File", FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_GRAPHIC, {FIO_EXTENSION_SYS}},
    {FIO_FILE_TYPE_CONSTRAINTS, "Timing Constraints File", FIO_FILE_TYPE_FLAG_CONSTRAINTS, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_SDC}},
    {FIO_FILE_TYPE_PIN_CONSTRAINTS, "Pin Constraints File", FIO_FILE_TYPE_FLAG_CONSTRAINTS, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_PCF}},
    {FIO_FILE_TYPE_TCL_SCRIPT, "Tcl Script File", FIO_FILE_TYPE_FLAG_SCRIPT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_TCL}},
    {FIO_FILE_TYPE_SETTINGS, "Settings File", FIO_FILE_TYPE_FLAG_SCRIPT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_NSF}},
    {FIO_FILE_TYPE_PROJECT, "Project File", FIO_FILE_TYPE_FLAG_SCRIPT, FIO_EDITOR_TYPE_NONE, {FIO_EXTENSION_NPF}},
    {FIO_FILE_TYPE_MEMORY_HEX, "Hexadecimal Memory File", FIO_FILE_TYPE_FLAG_MEMORY | FIO_FILE_TYPE_FLAG_PROGRAMMING, FIO_EDITOR_TYPE_MEMORY, {FIO_EXTENSION_HEX}},
    {FIO_FILE_TYPE_MEMORY_INIT, "Memory Initialization File", FIO_FILE_TYPE_FLAG_MEMORY, FIO_EDITOR_TYPE_MEMORY, {FIO_EXTENSION_MIF}},
    {FIO_FILE_TYPE_WAVEFORM, "Waveform File", FIO_FILE_TYPE_FLAG_SIMULATION, FIO_EDITOR_TYPE_WAVE, {FIO_EXTENSION_VWF}},
    {FIO_FILE_TYPE_VALUE_CHANGE_DUMP, "Value Change Dump File", FIO_FILE_TYPE_FLAG_SIMULATION, FIO_EDITOR_TYPE_WAVE, {FIO_EXTENSION_VCD, FIO_EXTENSION_FST}},
    {FIO_FILE_TYPE_SIGNAL_PROBE, "Signal Probe File", FIO_FILE_TYPE_FLAG_SIMULATION, FIO_EDITOR_TYPE_WAVE, {FIO_EXTENSION_STP}},
    {FIO_FILE_TYPE_BITSTREAM, "Bitstream File", FIO_FILE_TYPE_FLAG_PROGRAMMING, FIO_EDITOR_TYPE_NONE, {FIO_EXTENSION_BIT, FIO_EXTENSION_ASC}},
    {FIO_FILE_TYPE_PROGRAMMING, "Programming File", FIO_FILE_TYPE_FLAG_PROGRAMMING, FIO_EDITOR_TYPE_NONE, {FIO_EXTENSION_BIN}},
    {FIO_FILE_TYPE_C_SOURCE, "C Source File", FIO_FILE_TYPE_FLAG_SOFTWARE, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_C}},
    {FIO_FILE_TYPE_CPP_SOURCE, "C++ Source File", FIO_FILE_TYPE_FLAG_SOFTWARE, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_CPP, FIO_EXTENSION_CC}},
    {FIO_FILE_TYPE_C_HEADER, "C Header File", FIO_FILE_TYPE_FLAG_SOFTWARE, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_H}},
    {FIO_FILE_TYPE_CPP_HEADER, "C++ Header File", FIO_FILE_TYPE_FLAG_SOFTWARE, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_HPP, FIO_EXTENSION_H}},
    {FIO_FILE_TYPE_REPORT, "Report File", FIO_FILE_TYPE_FLAG_DOCUMENT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_RPT}},
    {FIO_FILE_TYPE_LOG, "Log File", FIO_FILE_TYPE_FLAG_DOCUMENT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_LOG}},
    {FIO_FILE_TYPE_TEXT, "Text File", FIO_FILE_TYPE_FLAG_DOCUMENT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_TXT}},
    {FIO_FILE_TYPE_HTML, "HTML File", FIO_FILE_TYPE_FLAG_DOCUMENT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_HTML, FIO_EXTENSION_HTM}},
    {FIO_FILE_TYPE_XML, "XML File", FIO_FILE_TYPE_FLAG_DOCUMENT, FIO_EDITOR_TYPE_TEXT, {FIO_EXTENSION_XML}},
};
// clang-format on

constexpr FLAG_ROW FLAGS[] = {
    {FIO_FILE_TYPE_FLAG_DESIGN, "Design Files"},           {FIO_FILE_TYPE_FLAG_NETLIST, "Netlist Files"},
    {FIO_FILE_TYPE_FLAG_CONSTRAINTS, "Constraint Files"},  {FIO_FILE_TYPE_FLAG_SCRIPT, "Script Files"},
    {FIO_FILE_TYPE_FLAG_MEMORY, "Memory Files"},           {FIO_FILE_TYPE_FLAG_SIMULATION, "Simulation Files"},
    {FIO_FILE_TYPE_FLAG_PROGRAMMING, "Programming Files"}, {FIO_FILE_TYPE_FLAG_SOFTWARE, "Software Files"},
    {FIO_FILE_TYPE_FLAG_DOCUMENT, "Document Files"},
};

constexpr bool are_extensions_in_order()
{
    for (int i = 0; i < FIO_EXTENSION_COUNT; ++i)
    {
        if (EXTENSIONS[i].extension != i)
            return false;
    }
    return true;
}

constexpr bool are_types_in_order()
{
    for (int i = 0; i < FIO_FILE_TYPE_COUNT; ++i)
    {
        if (TYPES[i].type != i)
            return false;
    }
    return true;
}

static_assert(std::size(EXTENSIONS) == FIO_EXTENSION_COUNT && are_extensions_in_order());
static_assert(std::size(TYPES) == FIO_FILE_TYPE_COUNT && are_types_in_order());

/// The row of a type; that of FIO_FILE_TYPE_UNKNOWN for unknown values.
const TYPE_ROW& get_row(FIO_FILE_TYPE type)
{
    const int index = type;
    return TYPES[index > 0 && index < FIO_FILE_TYPE_COUNT ? index : 0];
}

// Of ASCII only: the process's locale must not change what a file is.
std::string change_case(std::string text, bool to_upper)
{
    for (char& c : text)
    {
        if (to_upper && c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
        else if (!to_upper && c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    return text;
}

bool check_list(const void* list, int line)
{
    if (list == nullptr)
        MSG_INTERNAL_ERROR::report("list != NULL", "FIO", "fio", line);
    return list != nullptr;
}
} // namespace

std::string fio_get_extension_string(FIO_EXTENSION_TYPE extension)
{
    const int index = extension;
    return index > 0 && index < FIO_EXTENSION_COUNT ? EXTENSIONS[index].text : "";
}

FIO_EXTENSION_TYPE fio_get_default_extension_type(FIO_FILE_TYPE type)
{
    return get_row(type).extensions[0];
}

std::string fio_get_file_type_filter(FIO_FILE_TYPE type, bool upper_case_too)
{
    std::list<FIO_EXTENSION_TYPE> extensions;
    FIO_EXTENSION_TYPE_INFO::get_extension_type_list(type, &extensions);
    std::string patterns;
    for (const FIO_EXTENSION_TYPE extension : extensions)
    {
        const std::string text = fio_get_extension_string(extension);
        patterns += (patterns.empty() ? "*" : " *") + text;
        if (upper_case_too)
            patterns += " *" + change_case(text, true);
    }
    return patterns.empty() ? std::string() : fio_get_file_type_string(type) + " (" + patterns + ")";
}

std::string fio_get_file_type_string(FIO_FILE_TYPE type)
{
    return get_row(type).name;
}

std::string fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG flag)
{
    for (const FLAG_ROW& row : FLAGS)
    {
        if (row.flag == flag)
            return row.name;
    }
    return std::string();
}

FIO_FILE_TYPE fio_get_file_type(const std::string& file_name)
{
    const std::string wanted = change_case(FIO_PATH(file_name).extension(), false);
    for (const TYPE_ROW& row : TYPES)
    {
        for (const FIO_EXTENSION_TYPE extension : row.extensions)
        {
            if (extension != FIO_EXTENSION_NONE && wanted == EXTENSIONS[extension].text)
                return row.type;
        }
    }
    return FIO_FILE_TYPE_UNKNOWN;
}

void FIO_EXTENSION_TYPE_INFO::get_extension_type_list(FIO_FILE_TYPE type, std::list<FIO_EXTENSION_TYPE>* list)
{
    if (!check_list(list, __LINE__))
        return;
    list->clear();
    for (const FIO_EXTENSION_TYPE extension : get_row(type).extensions)
    {
        if (extension != FIO_EXTENSION_NONE)
            list->push_back(extension);
    }
}

void FIO_FILE_TYPE_INFO::get_file_type_list(FIO_FILE_TYPE_FLAG flag, FIO_EDITOR_TYPE editor,
                                            std::list<FIO_FILE_TYPE>* list)
{
    if (!check_list(list, __LINE__))
        return;
    list->clear();
    for (const TYPE_ROW& row : TYPES)
    {
        if ((row.flags & flag) != 0 && (editor == FIO_EDITOR_TYPE_ANY || editor == row.editor))
            list->push_back(row.type);
    }
}
