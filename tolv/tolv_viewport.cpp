#include "tolv_viewport.h"

#include "tolv_mem.h"
#include "tolv_perf_debug.h"

TOLV_MEM_INITIALIZER();

TOLV_VIEWPORT::TOLV_VIEWPORT() : m_perf_debug(std::make_unique<TOLV_PERF_DEBUG>())
{
}

TOLV_VIEWPORT::~TOLV_VIEWPORT() = default;

TOLV_PERF_DEBUG* TOLV_VIEWPORT::perf_debug() const
{
    return m_perf_debug.get();
}
