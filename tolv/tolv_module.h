#pragma once

#include "tolv_export.h"

#include "thr_drl.h"

#include <string>
#include <type_traits>
#include <utility>

/// One load of a run-time module, released when the object goes: load, find, call, unload, report in one place.
///
///     TOLV_MODULE("mod_webnav").call<void(int)>("webnav_dyn_locate_to_web_page_based_on_enum", 11);
///
/// A module that handed out objects of its own classes must outlive them: keep() it. The types in angle brackets are
/// those of the module's plain exported function; nothing checks them. GUI thread.
class TOLV_EXPORT TOLV_MODULE
{
public:
    /// Loads the module, quietly: is_loaded() says whether it could, thr_drl_get_error() why not.
    /// @param name        as thr_drl_load() takes it
    /// @param source_path where reports say that they come from: the caller, where it is left out
    /// @param line        the line there
    explicit TOLV_MODULE(const std::string& name, const char* source_path = __builtin_FILE(),
                         int line = __builtin_LINE());
    ~TOLV_MODULE();
    TOLV_MODULE(const TOLV_MODULE&) = delete;
    TOLV_MODULE& operator=(const TOLV_MODULE&) = delete;

    /// Whether there is a module.
    bool is_loaded() const;
    /// The same, where a module that is missing is an internal error with the loader's text.
    bool require_loaded() const;

    /// The exported function; null where it, or the module, is missing.
    template <class SIGNATURE>
    SIGNATURE* find_function(const std::string& function_name) const
    {
        static_assert(std::is_function_v<SIGNATURE>, "the type of the function, such as void(int)");
        return reinterpret_cast<SIGNATURE*>(thr_drl_find_function(m_handle, function_name));
    }

    /// Calls the exported function. A module or a function that is missing is an internal error with the loader's text;
    /// where that returns, so does the call, with an empty result.
    template <class SIGNATURE, class... ARGUMENTS>
    auto call(const std::string& function_name, ARGUMENTS&&... arguments) const
    {
        using RESULT = std::invoke_result_t<SIGNATURE*, ARGUMENTS...>;
        if (!require_loaded())
            return RESULT();
        if (SIGNATURE* const function = find_function<SIGNATURE>(function_name); function != nullptr)
            return RESULT(function(std::forward<ARGUMENTS>(arguments)...));
        report_error();
        return RESULT();
    }

    /// Leaves the module loaded when the object goes. Returns its handle, null where there is none.
    THR_DRL_HANDLE keep();

private:
    void report_error() const;

    const char* m_source_path;
    int m_line;
    THR_DRL_HANDLE m_handle;
    bool m_is_kept = false;
};
