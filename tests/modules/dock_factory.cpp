#include "dock_factory.h"

#include <dlfcn.h>

namespace
{
/// "mod_x" for the file mod_x.so that this module is.
std::string get_own_name()
{
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&make_window), &info) == 0)
        return "unknown";
    const std::string path = info.dli_fname;
    const std::size_t begin = path.rfind('/') + 1;
    return path.substr(begin, path.rfind('.') - begin);
}

__attribute__((constructor)) void on_load()
{
    write_module_line("load " + get_own_name());
}

__attribute__((destructor)) void on_unload()
{
    write_module_line("unload " + get_own_name());
}
} // namespace

TOLV_DOCK_WIDGET* make_window(const char* factory, TOLV_MAIN_WINDOW* main_window, const std::string& from)
{
    write_module_line("call " + std::string(factory) + from);
    if (main_window != nullptr && main_window->objectName() == QLatin1String("refused"))
        return nullptr;
    return new TOLV_DOCK_WIDGET(QLatin1String(factory), main_window);
}
