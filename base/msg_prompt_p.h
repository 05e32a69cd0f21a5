#pragma once

#include "msg_prompt.h"

/// Whether a prompt lives at this address, now. For pointers that come out of a script. Any thread.
bool msg_is_live_prompt(const void* address);
