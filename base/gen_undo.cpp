#include "gen.h"

namespace
{
/// Says that a step runs, also when the step ends in an exception.
class RUNNING_SCOPE
{
public:
    explicit RUNNING_SCOPE(bool* is_running) : m_is_running(is_running)
    {
        *m_is_running = true;
    }
    ~RUNNING_SCOPE()
    {
        *m_is_running = false;
    }
    RUNNING_SCOPE(const RUNNING_SCOPE&) = delete;
    RUNNING_SCOPE& operator=(const RUNNING_SCOPE&) = delete;

private:
    bool* m_is_running;
};
} // namespace

GEN_UNDO_REDO_COMMAND::~GEN_UNDO_REDO_COMMAND() = default;

GEN_UNDO_REDO_MGR::GEN_UNDO_REDO_MGR() = default;

GEN_UNDO_REDO_MGR::~GEN_UNDO_REDO_MGR()
{
    forget_from(0);
}

void GEN_UNDO_REDO_MGR::execute(std::unique_ptr<GEN_UNDO_REDO_COMMAND> command)
{
    if (command == nullptr)
        return;
    if (m_is_running)
    {
        command->redo();
        return;
    }
    // Room first: once the step is done, nothing may fail any more.
    if (m_commands.capacity() == m_done)
        m_commands.reserve(2 * m_done + 8);
    {
        const RUNNING_SCOPE running(&m_is_running);
        command->redo();
    }
    forget_from(m_done);
    m_commands.push_back(std::move(command));
    ++m_done;
}

bool GEN_UNDO_REDO_MGR::can_undo() const
{
    return !m_is_running && m_done > 0;
}

bool GEN_UNDO_REDO_MGR::can_redo() const
{
    return !m_is_running && m_done < m_commands.size();
}

void GEN_UNDO_REDO_MGR::undo()
{
    if (!can_undo())
        return;
    const RUNNING_SCOPE running(&m_is_running);
    m_commands[m_done - 1]->undo();
    --m_done;
}

void GEN_UNDO_REDO_MGR::redo()
{
    if (!can_redo())
        return;
    const RUNNING_SCOPE running(&m_is_running);
    m_commands[m_done]->redo();
    ++m_done;
}

std::string GEN_UNDO_REDO_MGR::get_undo_text() const
{
    return can_undo() ? m_commands[m_done - 1]->get_text() : std::string();
}

std::string GEN_UNDO_REDO_MGR::get_redo_text() const
{
    return can_redo() ? m_commands[m_done]->get_text() : std::string();
}

void GEN_UNDO_REDO_MGR::clear()
{
    if (m_is_running)
        return;
    m_done = 0;
    forget_from(0);
}

void GEN_UNDO_REDO_MGR::forget_from(std::size_t first)
{
    // The latest goes first, as later steps may refer to what earlier ones hold. Each is out of the list before it dies,
    // and a destructor that calls this object is treated as a step that runs.
    const RUNNING_SCOPE running(&m_is_running);
    while (m_commands.size() > first)
    {
        const std::unique_ptr<GEN_UNDO_REDO_COMMAND> command = std::move(m_commands.back());
        m_commands.pop_back();
    }
}
