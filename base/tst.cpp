#include "tst.h"

#include "cfg.h"

#include <cstdlib>
#include <cstring>

bool tst_is_regtest_mode()
{
    if (cfg_is_on("regtest_mode"))
        return true;
    const char* value = std::getenv("NORVANE_REGTEST");
    return value != nullptr && *value != '\0' && std::strcmp(value, "0") != 0;
}
