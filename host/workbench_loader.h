#pragma once

#include "netlist_reader.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

class UIB_THREAD_TASK;

/// Reads netlist files on a thread of their own, one at a time, and tells the GUI thread how it goes. A file that is
/// started while another is read takes its place: the other one is told to stop, and nothing more is heard of it. The
/// destructor stops and waits.
class WORKBENCH_LOADER : public QObject
{
    Q_OBJECT

public:
    explicit WORKBENCH_LOADER(QObject* parent = nullptr);
    ~WORKBENCH_LOADER() override;

    void start(const QString& file);
    bool is_running() const;
    /// The file that is being read, or was read last.
    const QString& get_file() const;
    /// What came out; complete from finished() to the next start.
    const NETLIST_READ_RESULT& get_result() const;

public slots:
    /// Asks for a stop; finished() follows soon, with a result that was stopped. Harmless while nothing runs.
    void cancel();

signals:
    /// 0 to 100.
    void progressed(int percent);
    /// The file has been read, has been found bad, or the reading was stopped.
    void finished();

private slots:
    void poll();

private:
    struct JOB;

    void finish_job();

    QString m_file;
    NETLIST_READ_RESULT m_result;
    std::unique_ptr<JOB> m_job;                ///< null while nothing runs
    std::vector<std::unique_ptr<JOB>> m_stale; ///< told to stop, not yet at their end
    QTimer m_poll_timer;
};
