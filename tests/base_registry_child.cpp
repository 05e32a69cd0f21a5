#include "cfgq_registry.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>
#include <QTimer>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

/// A second process on the same registry. First argument: what to do.

namespace
{
using ARGUMENTS = std::vector<std::string>;

CFGQ_REGISTRY_KEY gui_key()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

QString text(const std::string& argument)
{
    return QString::fromStdString(argument);
}

/// write PREFIX COUNT GO_FILE: waits for the file and then stores that many values, each a save of its own.
int write_values(const ARGUMENTS& arguments)
{
    const QString go_file = text(arguments.at(2));
    std::cout << "ready" << std::endl;
    while (!QFileInfo::exists(go_file))
        QThread::yieldCurrentThread();
    CFGQ_REGISTRY_KEY key = gui_key();
    for (int i = 0; i < std::stoi(arguments.at(1)); ++i)
    {
        if (!key.set_value(text(arguments.at(0)) + QString::number(i), i))
            return 1;
    }
    return 0;
}

/// collect COUNT END: stores values as an application whose event loop does not come to turn, and ends in one of the
/// ways of a process.
int collect_values(const ARGUMENTS& arguments)
{
    int count = 1;
    char name[] = "child";
    char* names[] = {name, nullptr};
    const QCoreApplication application(count, names);
    CFGQ_REGISTRY_KEY key = gui_key();
    for (int i = 0; i < std::stoi(arguments.at(0)); ++i)
    {
        if (!key.set_value(QStringLiteral("value") + QString::number(i), QStringLiteral("text %1").arg(i)))
            return 1;
    }
    const std::string& end = arguments.at(1);
    if (end == "abort")
        std::abort();
    if (end == "kill")
        ::raise(SIGKILL);
    if (end == "quick")
        ::_exit(0);
    if (end == "loop")
    {
        // Behind what the registry itself has put into the event loop.
        QTimer::singleShot(0, QCoreApplication::instance(), [] { ::_exit(0); });
        QCoreApplication::exec();
    }
    if (end == "save")
    {
        // One save while it runs, and one value more that the end must bring in.
        if (!CFGQ_REGISTRY::flush() || !key.set_value(QStringLiteral("last"), QStringLiteral("text")))
            return 1;
    }
    return 0;
}

/// serve: obeys lines "set NAME TEXT", "remove NAME" and "get NAME" until its input ends; answers each with a line.
int serve(const ARGUMENTS&)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    std::cout << "ready" << std::endl;
    std::string command;
    std::string name;
    while (std::cin >> command >> name)
    {
        QVariant value;
        std::string argument;
        bool ok = false;
        if (command == "set")
        {
            std::cin >> argument;
            ok = key.set_value(text(name), text(argument));
        }
        else if (command == "remove")
            ok = key.remove(text(name));
        else
            ok = CFGQ_REGISTRY::flush() && key.get_value(text(name), &value);
        std::cout << (ok ? "1 " : "0 ") << value.toString().toStdString() << std::endl;
    }
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    static const std::map<std::string, std::function<int(const ARGUMENTS&)>> tasks = {
        {"write", write_values}, {"collect", collect_values}, {"serve", serve}};
    const ARGUMENTS arguments(argv + 1, argv + argc);
    const auto task = arguments.empty() ? tasks.end() : tasks.find(arguments.front());
    return task == tasks.end() ? 2 : task->second(ARGUMENTS(arguments.begin() + 1, arguments.end()));
}
