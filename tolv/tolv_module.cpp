#include "tolv_module.h"

#include "tolv_check.h"
#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_MODULE::TOLV_MODULE(const std::string& name, const char* source_path, int line)
    : m_source_path(source_path), m_line(line), m_handle(thr_drl_load(name))
{
}

TOLV_MODULE::~TOLV_MODULE()
{
    if (!m_is_kept)
        thr_drl_unload(m_handle);
}

bool TOLV_MODULE::is_loaded() const
{
    return m_handle != nullptr;
}

bool TOLV_MODULE::require_loaded() const
{
    if (m_handle == nullptr)
        report_error();
    return m_handle != nullptr;
}

THR_DRL_HANDLE TOLV_MODULE::keep()
{
    m_is_kept = true;
    return m_handle;
}

void TOLV_MODULE::report_error() const
{
    tolv_report_internal_error(thr_drl_get_error().c_str(), m_source_path, m_line);
}
