#pragma once

/// Visibility of the base services' symbols. The embedded form is a shared library of its own, so that the
/// application, the graphical library and every run-time module see one configuration, one registry, one queue.
#define TOLV_BASE_EXPORT __attribute__((visibility("default")))
