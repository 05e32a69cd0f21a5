// All factories that also take where the window is asked for from.

#include "dock_factory.h"
#include "tolv_dock_mgr.h"

#define FACTORY(name)                                                                                                  \
    MODULE_EXPORT TOLV_DOCK_WIDGET* name(TOLV_MAIN_WINDOW* main_window, TOLV_DOCK_FROM_ENUM from);                     \
    TOLV_DOCK_WIDGET* name(TOLV_MAIN_WINDOW* main_window, TOLV_DOCK_FROM_ENUM from)                                    \
    {                                                                                                                  \
        return make_window(#name, main_window, " from " + std::to_string(static_cast<int>(from)));                     \
    }
FOR_EACH_STANDARD_FACTORY(FACTORY)
#undef FACTORY
