#include "workbench_loader.h"

#include "tolv_global.h"
#include "uib_task.h"

#include <QFile>

#include <algorithm>

namespace
{
constexpr int POLL_INTERVAL = 20; // milliseconds
} // namespace

struct WORKBENCH_LOADER::JOB
{
    explicit JOB(const std::string& file)
        : result(std::make_shared<NETLIST_READ_RESULT>()),
          task(
              [file, shared_result = result](UIB_THREAD_TASK::CONTROL& control)
              {
                  *shared_result = NETLIST_READER::read_file(file,
                                                             [&control](int percent)
                                                             {
                                                                 control.set_progress(percent);
                                                                 return !control.is_cancelled();
                                                             });
              })
    {
    }

    std::shared_ptr<NETLIST_READ_RESULT> result; ///< belongs to the thread until the task is done
    UIB_THREAD_TASK task;
};

WORKBENCH_LOADER::WORKBENCH_LOADER(QObject* parent) : QObject(parent)
{
    m_poll_timer.setInterval(POLL_INTERVAL);
    TOLV_SAFE_CONNECT(&m_poll_timer, SIGNAL(timeout()), this, SLOT(poll()));
}

WORKBENCH_LOADER::~WORKBENCH_LOADER() = default;

void WORKBENCH_LOADER::start(const QString& file)
{
    if (m_job != nullptr)
    {
        m_job->task.cancel();
        m_stale.push_back(std::move(m_job));
    }
    m_file = file;
    m_result = NETLIST_READ_RESULT();
    m_job = std::make_unique<JOB>(QFile::encodeName(file).toStdString());
    m_job->task.start();
    m_poll_timer.start();
    emit progressed(0);
}

bool WORKBENCH_LOADER::is_running() const
{
    return m_job != nullptr;
}

const QString& WORKBENCH_LOADER::get_file() const
{
    return m_file;
}

const NETLIST_READ_RESULT& WORKBENCH_LOADER::get_result() const
{
    return m_result;
}

void WORKBENCH_LOADER::cancel()
{
    if (m_job != nullptr)
        m_job->task.cancel();
}

void WORKBENCH_LOADER::poll()
{
    m_stale.erase(std::remove_if(m_stale.begin(), m_stale.end(),
                                 [](const std::unique_ptr<JOB>& job) { return job->task.is_done(); }),
                  m_stale.end());
    if (m_job == nullptr)
    {
        if (m_stale.empty())
            m_poll_timer.stop();
        return;
    }
    if (m_job->task.is_done())
        finish_job();
    else
        emit progressed(m_job->task.get_progress());
}

void WORKBENCH_LOADER::finish_job()
{
    m_job->task.finish();
    m_result = std::move(*m_job->result);
    const std::string thrown = m_job->task.get_error();
    m_job.reset();
    if (!thrown.empty())
    {
        m_result = NETLIST_READ_RESULT();
        m_result.error.file = QFile::encodeName(m_file).toStdString();
        m_result.error.reason = "the reading was given up: " + thrown;
    }
    // A task that was cancelled before its function began has nothing in its result.
    if (m_result.netlist == nullptr && m_result.error.reason.empty())
        m_result.was_stopped = true;
    emit finished();
}
