// A help module that writes down the topics, and when it is loaded and unloaded.

#include "recording_module.h"

namespace
{
__attribute__((constructor)) void on_load()
{
    write_module_line("load help");
}

__attribute__((destructor)) void on_unload()
{
    write_module_line("unload help");
}
} // namespace

MODULE_EXPORT void help_dyn_show_context_impl(const std::string& topic);

MODULE_EXPORT void help_dyn_show_context_impl(const std::string& topic)
{
    write_module_line("topic " + topic);
}
