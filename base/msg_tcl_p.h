#pragma once

struct Tcl_Interp;

/// Adds the messages' commands to an interpreter: `msg_tcl_prompt_display POINTER`, which shows the prompt and gives
/// its answer, a decimal number; and `msg_tcl_internal_error_display TEXT`. Both go to the display in force. Through
/// them a worker thread reaches the main thread's display.
void msg_tcl_create_commands(Tcl_Interp* interpreter);
