#pragma once

#include <functional>
#include <string>

struct Tcl_Interp;
struct Tcl_Obj;

/// What the interpreter's own commands need. Main thread.

/// A UTF-8 text in the form in which the interpreter keeps texts: a NUL as two bytes, a character beyond U+FFFF as the
/// two halves of its surrogate pair. Tcl relies on it: its string commands run past the end of a text with four-byte
/// characters. A byte that is no UTF-8 becomes the character of that number. A text in Tcl's form stays as it is.
std::string xtcl_to_tcl_text(const std::string& text);

/// The UTF-8 text of a value. Half a surrogate pair becomes U+FFFD.
std::string xtcl_get_text(Tcl_Obj* value);

/// Runs the body of a command. No exception may pass through Tcl's frames: one that leaves `body` is kept, the command
/// fails, and the evaluation that the command belongs to throws it again when Tcl is through. Returns the Tcl code.
int xtcl_call_guarded(Tcl_Interp* interpreter, const std::function<void()>& body);
