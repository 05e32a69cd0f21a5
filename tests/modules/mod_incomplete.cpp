// A module that was linked without one of its parts.

#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))

extern "C" int mod_incomplete_missing_part();

MODULE_EXPORT int mod_incomplete_run();

MODULE_EXPORT int mod_incomplete_run()
{
    return mod_incomplete_missing_part();
}
