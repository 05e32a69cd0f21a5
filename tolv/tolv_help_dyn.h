#pragma once

#include "tolv_export.h"
#include "tolv_module.h"

#include <memory>
#include <string>

/// Shows the help on a topic: hands it to `help_dyn_show_context_impl(const std::string&)` of the module "mod_help",
/// which the first call loads and which stays loaded. An empty topic is handed on like any other. A module or a
/// function that is missing is an internal error with the loader's text. GUI thread.
TOLV_EXPORT inline void help_dyn_show_context(const std::string& topic)
{
    static std::unique_ptr<TOLV_MODULE> s_help_module;
    if (s_help_module == nullptr)
    {
        auto module = std::make_unique<TOLV_MODULE>("mod_help", __FILE__, __LINE__);
        if (!module->require_loaded())
            return;
        module->keep();
        s_help_module = std::move(module);
    }
    s_help_module->call<void(const std::string&)>("help_dyn_show_context_impl", topic);
}
