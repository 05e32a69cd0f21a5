// Loads the module that its argument names, and writes the file that it came from, or the error.

#include "thr_drl.h"

#include <dlfcn.h>

#include <cstdio>

int main(int argc, char** argv)
{
    THR_DRL_HANDLE handle = thr_drl_load(argc > 1 ? argv[1] : nullptr);
    if (handle == nullptr)
    {
        std::printf("%s", thr_drl_get_error().c_str());
        return 1;
    }
    void* function = thr_drl_find_function(handle, "mod_sample_count_call");
    Dl_info info{};
    if (function == nullptr || dladdr(function, &info) == 0)
        return 2;
    std::printf("%s", info.dli_fname);
    return 0;
}
