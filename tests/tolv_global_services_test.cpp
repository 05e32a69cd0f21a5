// The global helpers on tables and times of this test's own: this program brings its own form of some base services,
// and the dynamic linker prefers it to that of the library.

#include "gen.h"
#include "tolv_global.h"

#include <gtest/gtest.h>

#include <list>
#include <string>

namespace
{
constexpr unsigned int TICK_COUNT = 4711;
int s_tick_count_queries = 0;

/// What the table of types was asked for last.
FIO_FILE_TYPE_FLAG s_asked_flag = FIO_FILE_TYPE_FLAG_DESIGN;
FIO_EDITOR_TYPE s_asked_editor = FIO_EDITOR_TYPE_ANY;
} // namespace

// ---- The services ---------------------------------------------------------------------------------------------------

unsigned int gen_get_tick_count()
{
    ++s_tick_count_queries;
    return TICK_COUNT;
}

std::string fio_get_extension_string(FIO_EXTENSION_TYPE extension)
{
    switch (extension)
    {
    case FIO_EXTENSION_V:
        return ".v";
    case FIO_EXTENSION_VH:
        return ".V"; // as another one writes the same
    case FIO_EXTENSION_SV:
        return ".sv";
    default:
        return "";
    }
}

std::string fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG flag)
{
    return flag == FIO_FILE_TYPE_FLAG_MEMORY ? "Memories" : "others";
}

void FIO_EXTENSION_TYPE_INFO::get_extension_type_list(FIO_FILE_TYPE type, std::list<FIO_EXTENSION_TYPE>* list)
{
    if (type == FIO_FILE_TYPE_VERILOG)
        *list = {FIO_EXTENSION_NONE, FIO_EXTENSION_V, FIO_EXTENSION_VH};
    else if (type == FIO_FILE_TYPE_SYSTEMVERILOG)
        *list = {FIO_EXTENSION_SV, FIO_EXTENSION_NONE, FIO_EXTENSION_V};
    else
        *list = {FIO_EXTENSION_NONE};
}

void FIO_FILE_TYPE_INFO::get_file_type_list(FIO_FILE_TYPE_FLAG flag, FIO_EDITOR_TYPE editor,
                                            std::list<FIO_FILE_TYPE>* list)
{
    s_asked_flag = flag;
    s_asked_editor = editor;
    *list = {FIO_FILE_TYPE_SYSTEMVERILOG, FIO_FILE_TYPE_VERILOG};
}

// ---- File dialogs ---------------------------------------------------------------------------------------------------

TEST(TOLV_GLOBAL_SERVICES_TEST, a_filter_skips_empty_extensions_and_those_seen_before_in_any_letter_case)
{
    EXPECT_EQ("Verilog (*.v *.sv)",
              tolv_create_filter("Verilog", {FIO_FILE_TYPE_VERILOG, FIO_FILE_TYPE_SYSTEMVERILOG}));
    EXPECT_EQ("Verilog (*.sv *.v)",
              tolv_create_filter("Verilog", {FIO_FILE_TYPE_SYSTEMVERILOG, FIO_FILE_TYPE_VERILOG}));
    EXPECT_EQ("Verilog (*.v)", tolv_create_filter("Verilog", {FIO_FILE_TYPE_VERILOG}));
    EXPECT_EQ("Text )", tolv_create_filter("Text", {FIO_FILE_TYPE_TEXT}));
}

TEST(TOLV_GLOBAL_SERVICES_TEST, what_one_filter_has_seen_counts_for_that_filter_alone)
{
    const std::string first = tolv_create_filter("Verilog", {FIO_FILE_TYPE_VERILOG});
    EXPECT_EQ(first, tolv_create_filter("Verilog", {FIO_FILE_TYPE_VERILOG}));
}

TEST(TOLV_GLOBAL_SERVICES_TEST, a_filter_by_class_asks_the_table_for_class_and_editor)
{
    EXPECT_EQ("Mine (*.sv *.v)", tolv_create_filter(FIO_FILE_TYPE_FLAG_SOFTWARE, "Mine", FIO_EDITOR_TYPE_GRAPHIC));
    EXPECT_EQ(FIO_FILE_TYPE_FLAG_SOFTWARE, s_asked_flag);
    EXPECT_EQ(FIO_EDITOR_TYPE_GRAPHIC, s_asked_editor);
    EXPECT_EQ("Memories (*.sv *.v)", tolv_create_filter(FIO_FILE_TYPE_FLAG_MEMORY, "", FIO_EDITOR_TYPE_MEMORY));
    EXPECT_EQ(FIO_FILE_TYPE_FLAG_MEMORY, s_asked_flag);
    EXPECT_EQ(FIO_EDITOR_TYPE_MEMORY, s_asked_editor);
}

// ---- Colours --------------------------------------------------------------------------------------------------------

TEST(TOLV_GLOBAL_SERVICES_TEST, the_colour_of_a_partition_draws_its_saturation_first_from_a_generator_seeded_once)
{
    GEN_RAND random(TICK_COUNT);
    for (int i = 0; i < 100; ++i)
    {
        const int saturation = static_cast<int>(random.draw() % 125) + 75;
        const int hue = static_cast<int>(random.draw() % 360);
        EXPECT_EQ(QColor::fromHsv(hue, saturation, 255, 255), tolv_get_random_partition_color()) << i;
    }
    EXPECT_EQ(1, s_tick_count_queries);
}
