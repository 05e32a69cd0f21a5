// A module for web pages that writes down the pages, and when it is loaded and unloaded.

#include "recording_module.h"

namespace
{
__attribute__((constructor)) void on_load()
{
    write_module_line("load webnav");
}

__attribute__((destructor)) void on_unload()
{
    write_module_line("unload webnav");
}
} // namespace

MODULE_EXPORT void webnav_dyn_locate_to_web_page_based_on_enum(int page);

MODULE_EXPORT void webnav_dyn_locate_to_web_page_based_on_enum(int page)
{
    write_module_line("page " + std::to_string(page));
}
