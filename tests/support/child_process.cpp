#include "child_process.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <csignal>

std::string get_child_path(const std::string& name)
{
    if (name.find('/') != std::string::npos)
        return name;
    return (QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path() + QLatin1Char('/') +
            QString::fromStdString(name))
        .toStdString();
}

CHILD_RESULT run_child(const std::string& program, const std::vector<std::string>& arguments,
                       const std::vector<std::pair<std::string, std::string>>& environment, int timeout_milliseconds)
{
    QStringList argument_list;
    for (const std::string& argument : arguments)
        argument_list << QString::fromStdString(argument);
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : environment)
        variables.insert(QString::fromStdString(name), QString::fromStdString(value));

    CHILD_RESULT result;
    QProcess process;
    process.setProcessEnvironment(variables);
    process.start(QString::fromStdString(get_child_path(program)), argument_list);
    result.started = process.waitForStarted(timeout_milliseconds);
    if (!result.started)
        return result;
    process.closeWriteChannel();
    result.timed_out = !process.waitForFinished(timeout_milliseconds);
    if (result.timed_out)
    {
        process.kill();
        process.waitForFinished(5000);
    }
    result.out = process.readAllStandardOutput().toStdString();
    result.err = process.readAllStandardError().toStdString();
    if (process.exitStatus() == QProcess::CrashExit)
        result.signal = result.timed_out ? SIGKILL : process.exitCode();
    else
        result.exit_status = process.exitCode();
    return result;
}
