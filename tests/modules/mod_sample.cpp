// A module that works: its counter starts anew with each load from the file.

#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))

namespace
{
int s_call_count = 0;
}

MODULE_EXPORT int mod_sample_count_call();

MODULE_EXPORT int mod_sample_count_call()
{
    return ++s_call_count;
}
