#include "gui_test.h"
#include "tolv_msg.h"

#include <gtest/gtest.h>

namespace
{
class TOLV_MSG_TEST : public TOLV_TEST
{
};

void expect_message(const MSG_PROMPT& message, MSG_PROMPT_TYPE type, const char* text, const char* identifier,
                    unsigned int number)
{
    EXPECT_EQ(type, message.get_type());
    EXPECT_EQ(text, message.get_text());
    EXPECT_EQ(identifier, message.get_identifier());
    EXPECT_EQ(number, message.get_number());
}
} // namespace

TEST_F(TOLV_MSG_TEST, an_existing_file_asks_ok_or_cancel)
{
    expect_message(*MSG_TOLV::CO::TOLV_FILE_EXISTS(), MSG_PROMPT_TYPE_CO,
                   "File already exists. Do you want to overwrite the existing file?", "COTOLV_TOLV_FILE_EXISTS",
                   189003);
}

TEST_F(TOLV_MSG_TEST, a_module_that_does_not_load_is_named_with_the_reason)
{
    expect_message(*MSG_TOLV::O::FAILED_TO_LOAD_LIBRARY("mod_x", "no such file"), MSG_PROMPT_TYPE_O,
                   "Can't open dockable window -- can't load library \"mod_x\". no such file.",
                   "OTOLV_FAILED_TO_LOAD_LIBRARY", 189000);
}

TEST_F(TOLV_MSG_TEST, an_argument_is_taken_as_it_stands)
{
    EXPECT_EQ("Can't open dockable window -- can't load library \"%2!s!/A\". 100%/B.",
              MSG_TOLV::O::FAILED_TO_LOAD_LIBRARY("%2!s!/A", "100%/B")->get_text());
    EXPECT_EQ("Access to file  was denied.", MSG_TOLV::O::TOLV_READ_ONLY(nullptr)->get_text());
}

TEST_F(TOLV_MSG_TEST, one_name_from_the_node_finder)
{
    expect_message(*MSG_TOLV::O::ONE_NAME_SELECTED_FROM_NODE_FINDER(), MSG_PROMPT_TYPE_O,
                   "Only one node name is selected in the Node Finder", "OTOLV_ONE_NAME_SELECTED_FROM_NODE_FINDER",
                   189001);
}

TEST_F(TOLV_MSG_TEST, a_file_that_may_not_be_written_is_named)
{
    expect_message(*MSG_TOLV::O::TOLV_READ_ONLY("/a/b.v"), MSG_PROMPT_TYPE_O, "Access to file /a/b.v was denied.",
                   "OTOLV_TOLV_READ_ONLY", 189002);
}

TEST_F(TOLV_MSG_TEST, changes_that_would_be_lost_ask_yes_no_or_cancel)
{
    expect_message(*MSG_TOLV::YNC::CONFIRM_SAVE(), MSG_PROMPT_TYPE_YNC, "Do you want to save your changes?",
                   "YNCTOLV_CONFIRM_SAVE", 20978);
}

TEST_F(TOLV_MSG_TEST, a_debug_message_is_filled_as_printf_does)
{
    const auto message = MSG_TOLV::DEBUG_MSG(MSG_D_LEVEL_3, "%s has %d rows", "tree", 7);
    EXPECT_EQ("TOLV", message->get_tag());
    EXPECT_EQ(MSG_D_LEVEL_3, message->get_level());
    EXPECT_EQ("tree has 7 rows", message->get_text());
}

TEST_F(TOLV_MSG_TEST, the_usual_level_of_a_debug_message_is_two)
{
    const auto message = MSG_TOLV::DEBUG_MSG("%d%%/X", 7);
    EXPECT_EQ("TOLV", message->get_tag());
    EXPECT_EQ(MSG_D_LEVEL_2, message->get_level());
    EXPECT_EQ("7%/X", message->get_text());
}

TEST_F(TOLV_MSG_TEST, a_debug_message_that_is_sent_becomes_a_record)
{
    const SCOPED_EXPECTED_DEBUG_RECORD expected("TOLV", "row 7");
    MSG_TOLV::DEBUG_MSG("row %d", 7)->send();
}
