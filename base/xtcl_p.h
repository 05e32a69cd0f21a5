#pragma once

#include <functional>
#include <string>

struct Tcl_Interp;
struct Tcl_Obj;

/// What the interpreter's own commands need. Main thread.

/// The text of a value. Tcl keeps a NUL as two bytes; here it is one again.
std::string xtcl_get_text(Tcl_Obj* value);

/// Runs the body of a command. No exception may pass through Tcl's frames: one that leaves `body` is kept, the command
/// fails, and the evaluation that the command belongs to throws it again when Tcl is through. Returns the Tcl code.
int xtcl_call_guarded(Tcl_Interp* interpreter, const std::function<void()>& body);
