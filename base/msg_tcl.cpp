#include "msg_tcl_p.h"

#include "msg.h"
#include "msg_prompt_p.h"
#include "xtcl.h"
#include "xtcl_p.h"

#include <tcl.h>

namespace
{
int show_prompt(ClientData, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[])
{
    if (count != 2)
    {
        Tcl_WrongNumArgs(interpreter, 1, words, "pointer");
        return TCL_ERROR;
    }
    void* pointer = xtcl_string_to_ptr(Tcl_GetString(words[1]));
    if (pointer == nullptr || !msg_is_live_prompt(pointer))
    {
        Tcl_SetObjResult(interpreter, Tcl_ObjPrintf("\"%s\" is not the pointer of a prompt", Tcl_GetString(words[1])));
        return TCL_ERROR;
    }
    return xtcl_call_guarded(interpreter,
                             [&]
                             {
                                 const int answer =
                                     msg_get_display_in_force()->prompt_display(static_cast<MSG_PROMPT*>(pointer));
                                 Tcl_SetObjResult(interpreter, Tcl_NewIntObj(answer));
                             });
}

int show_internal_error(ClientData, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[])
{
    if (count != 2)
    {
        Tcl_WrongNumArgs(interpreter, 1, words, "text");
        return TCL_ERROR;
    }
    const std::string text = xtcl_get_text(words[1]);
    return xtcl_call_guarded(interpreter,
                             [&]
                             {
                                 msg_get_display_in_force()->internal_error_display(text);
                                 Tcl_ResetResult(interpreter);
                             });
}
} // namespace

void msg_tcl_create_commands(Tcl_Interp* interpreter)
{
    Tcl_CreateObjCommand(interpreter, "msg_tcl_prompt_display", show_prompt, nullptr, nullptr);
    Tcl_CreateObjCommand(interpreter, "msg_tcl_internal_error_display", show_internal_error, nullptr, nullptr);
}
