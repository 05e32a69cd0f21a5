#pragma once

#include "base_export.h"

#include <string>

/// Version of the product, as messages and title pages show it. The embedded form takes the numbers from the build.

/// "Norvane".
TOLV_BASE_EXPORT std::string ver_get_product_name();

/// "Version 1.2.3 Build 45 Edition", and with `include_date` the date of the build behind it.
TOLV_BASE_EXPORT std::string ver_get_full_version(bool include_date);

/// "Version 1.2.3".
TOLV_BASE_EXPORT std::string ver_get_version_string();

/// The bare number "1.2.3".
TOLV_BASE_EXPORT std::string ver_get_version_number();

/// Number of the build.
TOLV_BASE_EXPORT int ver_get_build_number();

/// Kind of the installation: "Community Edition" or what the configuration text "install_type" says.
TOLV_BASE_EXPORT std::string ver_get_install_type_string();

/// The installed patches, a list divided by ", ", from the configuration text "installed_patches"; usually empty.
TOLV_BASE_EXPORT std::string ver_get_acs_patches_string();

/// Whether this is a build given out for trial before release: version 0, or the configuration switch "beta_version".
TOLV_BASE_EXPORT bool ver_is_beta();
