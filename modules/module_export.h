#pragma once

/// Before a function that a module offers by its plain name.
#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))
