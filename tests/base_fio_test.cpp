#include "fio.h"
#include "internal_error_trap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <set>

namespace
{
std::list<FIO_EXTENSION_TYPE> extensions_of(FIO_FILE_TYPE type)
{
    std::list<FIO_EXTENSION_TYPE> list = {FIO_EXTENSION_XML};
    FIO_EXTENSION_TYPE_INFO::get_extension_type_list(type, &list);
    return list;
}

std::list<FIO_FILE_TYPE> types_of(int flag, FIO_EDITOR_TYPE editor)
{
    std::list<FIO_FILE_TYPE> list = {FIO_FILE_TYPE_XML};
    FIO_FILE_TYPE_INFO::get_file_type_list(FIO_FILE_TYPE_FLAG(flag), editor, &list);
    return list;
}
} // namespace

TEST(fio, stored_values_stand)
{
    EXPECT_EQ(0, FIO_FILE_TYPE_UNKNOWN);
    EXPECT_EQ(1, FIO_FILE_TYPE_VERILOG);
    EXPECT_EQ(7, FIO_FILE_TYPE_JSON_NETLIST);
    EXPECT_EQ(34, FIO_FILE_TYPE_XML);
    EXPECT_EQ(35, FIO_FILE_TYPE_COUNT);
}

TEST(fio, every_type_has_a_name_of_its_own_an_extension_and_a_class)
{
    std::set<std::string> names;
    for (int i = 1; i < FIO_FILE_TYPE_COUNT; ++i)
    {
        const auto type = FIO_FILE_TYPE(i);
        EXPECT_TRUE(names.insert(fio_get_file_type_string(type)).second) << i;
        EXPECT_NE(FIO_EXTENSION_NONE, fio_get_default_extension_type(type)) << i;
        EXPECT_FALSE(extensions_of(type).empty()) << i;
        EXPECT_EQ(fio_get_default_extension_type(type), extensions_of(type).front()) << i;
        const std::list<FIO_FILE_TYPE> all = types_of(~0, FIO_EDITOR_TYPE_ANY);
        EXPECT_NE(all.end(), std::find(all.begin(), all.end(), type)) << i;
    }
    EXPECT_EQ(0u, names.count(""));
}

TEST(fio, every_extension_belongs_to_a_type_and_begins_with_its_dot)
{
    std::set<FIO_EXTENSION_TYPE> used;
    for (int i = 1; i < FIO_FILE_TYPE_COUNT; ++i)
    {
        for (const FIO_EXTENSION_TYPE extension : extensions_of(FIO_FILE_TYPE(i)))
            used.insert(extension);
    }
    std::set<std::string> texts;
    for (int i = 1; i < FIO_EXTENSION_COUNT; ++i)
    {
        const std::string text = fio_get_extension_string(FIO_EXTENSION_TYPE(i));
        EXPECT_EQ(1u, used.count(FIO_EXTENSION_TYPE(i))) << text;
        EXPECT_TRUE(texts.insert(text).second) << text;
        EXPECT_EQ('.', text.at(0));
        EXPECT_EQ(std::string::npos, text.find_first_not_of("abcdefghijklmnopqrstuvwxyz", 1)) << text;
    }
}

TEST(fio, extensions_of_hdl_files)
{
    EXPECT_EQ(".v", fio_get_extension_string(FIO_EXTENSION_V));
    EXPECT_EQ((std::list<FIO_EXTENSION_TYPE>{FIO_EXTENSION_V}), extensions_of(FIO_FILE_TYPE_VERILOG));
    EXPECT_EQ((std::list<FIO_EXTENSION_TYPE>{FIO_EXTENSION_SV}), extensions_of(FIO_FILE_TYPE_SYSTEMVERILOG));
    EXPECT_EQ((std::list<FIO_EXTENSION_TYPE>{FIO_EXTENSION_VH, FIO_EXTENSION_SVH}),
              extensions_of(FIO_FILE_TYPE_VERILOG_INCLUDE));
    EXPECT_EQ((std::list<FIO_EXTENSION_TYPE>{FIO_EXTENSION_VHD, FIO_EXTENSION_VHDL}),
              extensions_of(FIO_FILE_TYPE_VHDL));
}

TEST(fio, filters_of_types)
{
    EXPECT_EQ("Verilog HDL File (*.v)", fio_get_file_type_filter(FIO_FILE_TYPE_VERILOG, false));
    EXPECT_EQ("VHDL File (*.vhd *.vhdl)", fio_get_file_type_filter(FIO_FILE_TYPE_VHDL, false));
    EXPECT_EQ("VHDL File (*.vhd *.VHD *.vhdl *.VHDL)", fio_get_file_type_filter(FIO_FILE_TYPE_VHDL, true));
    EXPECT_EQ("JSON Netlist File (*.json)", fio_get_file_type_filter(FIO_FILE_TYPE_JSON_NETLIST, false));
    EXPECT_EQ("C++ Source File (*.cpp *.cc)", fio_get_file_type_filter(FIO_FILE_TYPE_CPP_SOURCE, false));
}

TEST(fio, unknown_values_have_no_texts)
{
    for (const int value : {0, -1, int(FIO_FILE_TYPE_COUNT), 1000, INT_MAX, INT_MIN})
    {
        const auto type = FIO_FILE_TYPE(value);
        EXPECT_EQ("", fio_get_file_type_string(type)) << value;
        EXPECT_EQ("", fio_get_file_type_filter(type, false)) << value;
        EXPECT_EQ("", fio_get_file_type_filter(type, true)) << value;
        EXPECT_EQ(FIO_EXTENSION_NONE, fio_get_default_extension_type(type)) << value;
        EXPECT_TRUE(extensions_of(type).empty()) << value;
    }
    for (const int value : {0, -1, int(FIO_EXTENSION_COUNT), 1000, INT_MAX, INT_MIN})
        EXPECT_EQ("", fio_get_extension_string(FIO_EXTENSION_TYPE(value))) << value;
    for (const int value : {0, -1, 3, 0x200})
        EXPECT_EQ("", fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG(value))) << value;
}

TEST(fio, every_class_has_a_name_and_types)
{
    std::set<std::string> names;
    for (int flag = FIO_FILE_TYPE_FLAG_DESIGN; flag <= FIO_FILE_TYPE_FLAG_DOCUMENT; flag *= 2)
    {
        EXPECT_TRUE(names.insert(fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG(flag))).second) << flag;
        EXPECT_FALSE(types_of(flag, FIO_EDITOR_TYPE_ANY).empty()) << flag;
    }
    EXPECT_EQ(0u, names.count(""));
    EXPECT_EQ("Design Files", fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG_DESIGN));
    EXPECT_EQ("Simulation Files", fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG_SIMULATION));
}

TEST(fio, types_of_a_class_come_by_value_and_by_editor)
{
    EXPECT_EQ((std::list<FIO_FILE_TYPE>{FIO_FILE_TYPE_EDIF, FIO_FILE_TYPE_BLIF, FIO_FILE_TYPE_JSON_NETLIST,
                                        FIO_FILE_TYPE_PLACED_NETLIST}),
              types_of(FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_ANY));
    EXPECT_EQ((std::list<FIO_FILE_TYPE>{FIO_FILE_TYPE_EDIF, FIO_FILE_TYPE_BLIF}),
              types_of(FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_TEXT));
    EXPECT_EQ((std::list<FIO_FILE_TYPE>{}), types_of(FIO_FILE_TYPE_FLAG_NETLIST, FIO_EDITOR_TYPE_WAVE));
    EXPECT_EQ((std::list<FIO_FILE_TYPE>{}), types_of(0, FIO_EDITOR_TYPE_ANY));
}

TEST(fio, a_null_list_is_an_internal_error)
{
    EXPECT_INTERNAL_ERROR(FIO_EXTENSION_TYPE_INFO::get_extension_type_list(FIO_FILE_TYPE_VHDL, nullptr),
                          "list != NULL");
    EXPECT_INTERNAL_ERROR(
        FIO_FILE_TYPE_INFO::get_file_type_list(FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_ANY, nullptr),
        "list != NULL");
}

TEST(fio, the_type_of_a_file_goes_by_its_extension)
{
    EXPECT_EQ(FIO_FILE_TYPE_VERILOG, fio_get_file_type("top.v"));
    EXPECT_EQ(FIO_FILE_TYPE_VERILOG, fio_get_file_type("/a.json/TOP.V"));
    EXPECT_EQ(FIO_FILE_TYPE_VHDL, fio_get_file_type("x.y.VhDl"));
    EXPECT_EQ(FIO_FILE_TYPE_JSON_NETLIST, fio_get_file_type("placed.json"));
    EXPECT_EQ(FIO_FILE_TYPE_C_HEADER, fio_get_file_type("a.h"));
    for (const char* name : {"", "v", ".v", "top.v/", "top.v.", "top.vv", "top", ".", "..", "/", "top. v"})
        EXPECT_EQ(FIO_FILE_TYPE_UNKNOWN, fio_get_file_type(name)) << name;
    EXPECT_EQ(FIO_FILE_TYPE_UNKNOWN, fio_get_file_type(std::string("top.v\0", 6)));
}
