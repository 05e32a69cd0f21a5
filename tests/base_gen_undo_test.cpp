#include "gen.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{
/// A step that notes what happens to it.
class NOTING_COMMAND : public GEN_UNDO_REDO_COMMAND
{
public:
    NOTING_COMMAND(std::string name, std::vector<std::string>* notes) : m_name(std::move(name)), m_notes(notes)
    {
    }
    ~NOTING_COMMAND() override
    {
        m_notes->push_back("end " + m_name);
        if (on_end)
            on_end();
    }
    void redo() override
    {
        if (on_redo)
            on_redo();
        m_notes->push_back("do " + m_name);
    }
    void undo() override
    {
        if (on_undo)
            on_undo();
        m_notes->push_back("undo " + m_name);
    }
    std::string get_text() const override
    {
        return m_name;
    }

    std::function<void()> on_redo;
    std::function<void()> on_undo;
    std::function<void()> on_end;

private:
    std::string m_name;
    std::vector<std::string>* m_notes;
};

class gen_undo : public testing::Test
{
protected:
    std::unique_ptr<NOTING_COMMAND> make(const std::string& name)
    {
        return std::make_unique<NOTING_COMMAND>(name, &m_notes);
    }
    void execute(const std::string& name)
    {
        m_manager.execute(make(name));
    }
    std::vector<std::string> take_notes()
    {
        return std::exchange(m_notes, {});
    }

    using NOTES = std::vector<std::string>;
    NOTES m_notes;
    GEN_UNDO_REDO_MGR m_manager;
};

[[noreturn]] void fail()
{
    throw std::runtime_error("the step fails");
}
} // namespace

TEST_F(gen_undo, an_empty_stack_has_nothing_to_take_back_or_do_again)
{
    EXPECT_FALSE(m_manager.can_undo());
    EXPECT_FALSE(m_manager.can_redo());
    EXPECT_EQ("", m_manager.get_undo_text());
    EXPECT_EQ("", m_manager.get_redo_text());
    m_manager.undo();
    m_manager.redo();
    m_manager.clear();
    m_manager.execute(nullptr);
    EXPECT_FALSE(m_manager.can_undo());
}

TEST_F(gen_undo, steps_are_taken_back_and_done_again_in_order)
{
    execute("a");
    execute("b");
    EXPECT_EQ("b", m_manager.get_undo_text());
    EXPECT_EQ("", m_manager.get_redo_text());
    m_manager.undo();
    EXPECT_EQ("a", m_manager.get_undo_text());
    EXPECT_EQ("b", m_manager.get_redo_text());
    m_manager.undo();
    EXPECT_FALSE(m_manager.can_undo());
    EXPECT_EQ("a", m_manager.get_redo_text());
    m_manager.undo();
    m_manager.redo();
    m_manager.redo();
    EXPECT_FALSE(m_manager.can_redo());
    m_manager.redo();
    EXPECT_EQ(NOTES({"do a", "do b", "undo b", "undo a", "do a", "do b"}), take_notes());
}

TEST_F(gen_undo, a_new_step_forgets_what_was_taken_back)
{
    for (const char* name : {"a", "b", "c"})
        execute(name);
    m_manager.undo();
    m_manager.undo();
    take_notes();
    execute("d");
    EXPECT_EQ(NOTES({"do d", "end c", "end b"}), take_notes());
    EXPECT_FALSE(m_manager.can_redo());
    EXPECT_EQ("d", m_manager.get_undo_text());
    m_manager.undo();
    EXPECT_EQ("a", m_manager.get_undo_text());
}

TEST_F(gen_undo, clear_forgets_all_the_latest_first_and_takes_nothing_back)
{
    for (const char* name : {"a", "b", "c"})
        execute(name);
    m_manager.undo();
    take_notes();
    m_manager.clear();
    EXPECT_EQ(NOTES({"end c", "end b", "end a"}), take_notes());
    EXPECT_FALSE(m_manager.can_undo());
    EXPECT_FALSE(m_manager.can_redo());
    execute("d");
    EXPECT_EQ("d", m_manager.get_undo_text());
}

TEST_F(gen_undo, the_manager_s_end_forgets_the_latest_first)
{
    {
        GEN_UNDO_REDO_MGR manager;
        manager.execute(make("a"));
        manager.execute(make("b"));
    }
    EXPECT_EQ(NOTES({"do a", "do b", "end b", "end a"}), take_notes());
}

TEST_F(gen_undo, a_step_that_throws_is_not_remembered_and_forgets_nothing)
{
    execute("a");
    execute("b");
    m_manager.undo();
    auto failing = make("c");
    failing->on_redo = fail;
    EXPECT_THROW(m_manager.execute(std::move(failing)), std::runtime_error);
    EXPECT_EQ("a", m_manager.get_undo_text());
    EXPECT_EQ("b", m_manager.get_redo_text());
}

TEST_F(gen_undo, a_step_that_throws_when_taken_back_or_done_again_stays_where_it_is)
{
    bool is_failing = false;
    auto command = make("a");
    command->on_redo = command->on_undo = [&]
    {
        if (is_failing)
            fail();
    };
    m_manager.execute(std::move(command));
    is_failing = true;
    EXPECT_THROW(m_manager.undo(), std::runtime_error);
    EXPECT_EQ("a", m_manager.get_undo_text());
    EXPECT_FALSE(m_manager.can_redo());
    is_failing = false;
    m_manager.undo();
    is_failing = true;
    EXPECT_THROW(m_manager.redo(), std::runtime_error);
    EXPECT_EQ("a", m_manager.get_redo_text());
    EXPECT_FALSE(m_manager.can_undo());
    is_failing = false;
    m_manager.redo();
    EXPECT_TRUE(m_manager.can_undo());
}

TEST_F(gen_undo, a_step_executed_by_a_step_is_a_part_of_it)
{
    auto outer = make("outer");
    outer->on_redo = [this] { execute("inner"); };
    m_manager.execute(std::move(outer));
    EXPECT_EQ(NOTES({"do inner", "end inner", "do outer"}), take_notes());
    m_manager.undo();
    EXPECT_EQ(NOTES({"undo outer"}), take_notes());
    EXPECT_FALSE(m_manager.can_undo());
    m_manager.redo();
    EXPECT_EQ(NOTES({"do inner", "end inner", "do outer"}), take_notes());
    EXPECT_FALSE(m_manager.can_redo());
}

TEST_F(gen_undo, a_running_step_cannot_move_the_stack)
{
    execute("a");
    execute("b");
    m_manager.undo();
    take_notes();
    const auto meddle = [this]
    {
        EXPECT_FALSE(m_manager.can_undo());
        EXPECT_FALSE(m_manager.can_redo());
        EXPECT_EQ("", m_manager.get_undo_text());
        EXPECT_EQ("", m_manager.get_redo_text());
        m_manager.undo();
        m_manager.redo();
        m_manager.clear();
    };
    auto command = make("c");
    command->on_redo = command->on_undo = meddle;
    m_manager.execute(std::move(command));
    m_manager.undo();
    m_manager.redo();
    EXPECT_EQ(NOTES({"do c", "end b", "undo c", "do c"}), take_notes());
    EXPECT_EQ("c", m_manager.get_undo_text());
}

TEST_F(gen_undo, a_step_that_acts_while_it_is_forgotten_does_no_harm)
{
    execute("a");
    auto acting = make("b");
    acting->on_end = [this]
    {
        execute("late");
        m_manager.undo();
        m_manager.clear();
    };
    m_manager.execute(std::move(acting));
    execute("c");
    m_manager.undo();
    m_manager.undo();
    take_notes();
    execute("d");
    EXPECT_EQ(NOTES({"do d", "end c", "end b", "do late", "end late"}), take_notes());
    EXPECT_EQ("d", m_manager.get_undo_text());
    m_manager.undo();
    EXPECT_EQ("a", m_manager.get_undo_text());
}

TEST_F(gen_undo, a_long_session_keeps_every_step)
{
    constexpr int count = 100000;
    for (int i = 0; i < count; ++i)
        execute(std::to_string(i));
    for (int i = count - 1; i >= 0; --i)
    {
        ASSERT_EQ(std::to_string(i), m_manager.get_undo_text());
        m_manager.undo();
    }
    EXPECT_FALSE(m_manager.can_undo());
    EXPECT_EQ("0", m_manager.get_redo_text());
}
