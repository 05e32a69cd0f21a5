#include "mod_help.h"

#include "help_window.h"

void help_dyn_show_context_impl(const std::string& topic)
{
    HELP_WINDOW::get().show_topic(QString::fromLocal8Bit(topic.c_str()));
}
