#include "tolv_msg.h"

#include "tolv_mem.h"

#include <cstdarg>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr const char* TAG = "TOLV";

template <class MESSAGE, class... ARGUMENTS>
std::unique_ptr<MESSAGE> make_message(unsigned int number, const char* format, ARGUMENTS... arguments)
{
    auto message = std::make_unique<MESSAGE>();
    message->set_number(number);
    message->fill_args(format, arguments...);
    return message;
}
} // namespace

std::unique_ptr<MSG_CO> MSG_TOLV::CO::TOLV_FILE_EXISTS()
{
    return make_message<MSG_CO>(
        189003, "File already exists. Do you want to overwrite the existing file?/COTOLV_TOLV_FILE_EXISTS");
}

std::unique_ptr<MSG_O> MSG_TOLV::O::FAILED_TO_LOAD_LIBRARY(const char* library, const char* reason)
{
    return make_message<MSG_O>(
        189000, "Can't open dockable window -- can't load library \"%1!s!\". %2!s!./OTOLV_FAILED_TO_LOAD_LIBRARY",
        library, reason);
}

std::unique_ptr<MSG_O> MSG_TOLV::O::ONE_NAME_SELECTED_FROM_NODE_FINDER()
{
    return make_message<MSG_O>(
        189001, "Only one node name is selected in the Node Finder/OTOLV_ONE_NAME_SELECTED_FROM_NODE_FINDER");
}

std::unique_ptr<MSG_O> MSG_TOLV::O::TOLV_READ_ONLY(const char* file)
{
    return make_message<MSG_O>(189002, "Access to file %1!s! was denied./OTOLV_TOLV_READ_ONLY", file);
}

std::unique_ptr<MSG_YNC> MSG_TOLV::YNC::CONFIRM_SAVE()
{
    return make_message<MSG_YNC>(20978, "Do you want to save your changes?/YNCTOLV_CONFIRM_SAVE");
}

std::unique_ptr<MSG_D> MSG_TOLV::DEBUG_MSG(MSG_D_LEVEL level, const char* format, ...)
{
    auto message = std::make_unique<MSG_D>(TAG, level);
    va_list arguments;
    va_start(arguments, format);
    message->format_v(format, arguments);
    va_end(arguments);
    return message;
}

std::unique_ptr<MSG_D> MSG_TOLV::DEBUG_MSG(const char* format, ...)
{
    auto message = std::make_unique<MSG_D>(TAG, MSG_D_LEVEL_2);
    va_list arguments;
    va_start(arguments, format);
    message->format_v(format, arguments);
    va_end(arguments);
    return message;
}
