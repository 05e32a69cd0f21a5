#pragma once

#include "msg.h"

/// The store of debug records behind msg_local_vdebug() and MSG_D::send().

/// How many records are kept.
constexpr std::size_t MSG_DEBUG_RECORD_COUNT = 256;

/// Keeps a record and writes it to the debug message file where there is one. Any thread.
void msg_add_debug_record(MSG_DEBUG_RECORD record);

/// Visits the kept records, oldest first, without allocating and without waiting: for the handler of a fatal signal.
/// Returns false, having visited nothing, where another thread is changing the store, or this one was when the signal
/// came.
bool msg_try_visit_debug_records(void (*visit)(void* context, const MSG_DEBUG_RECORD& record), void* context);
