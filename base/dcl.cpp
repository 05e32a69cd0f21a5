#include "dcl.h"

#include <cstdlib>
#include <cstring>

bool DCL_ENV::is_alt_mode()
{
    const char* value = std::getenv("NORVANE_ALT_MODE");
    return value != nullptr && *value != '\0' && std::strcmp(value, "0") != 0;
}
