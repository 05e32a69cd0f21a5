#pragma once

#include "base_export.h"

#include <string>

/// Version of the product, as messages and title pages show it. The embedded form takes the numbers and the date from
/// the build: the project's version, the build option TOLV_BUILD_NUMBER, and the day on which the build was configured
/// (that of SOURCE_DATE_EPOCH where it is set). Any thread.

/// "Norvane".
TOLV_BASE_EXPORT std::string ver_get_product_name();

/// "Version 1.2.3 Build 45 Community Edition": version, build and kind of the installation. With `include_date` a blank
/// and the date of the build follow, in UTC ("Version 1.2.3 Build 45 Community Edition 2024-05-31").
TOLV_BASE_EXPORT std::string ver_get_full_version(bool include_date);

/// "Version 1.2.3".
TOLV_BASE_EXPORT std::string ver_get_version_string();

/// The bare number "1.2.3".
TOLV_BASE_EXPORT std::string ver_get_version_number();

/// Number of the build.
TOLV_BASE_EXPORT int ver_get_build_number();

/// Kind of the installation: "Community Edition", or what the configuration text "install_type" says where it is not
/// empty.
TOLV_BASE_EXPORT std::string ver_get_install_type_string();

/// The installed patches, a list divided by ", ", from the configuration text "installed_patches", where commas divide
/// them; usually empty.
TOLV_BASE_EXPORT std::string ver_get_acs_patches_string();

/// Whether this is a build given out for trial before release: version 0, or the configuration switch "beta_version".
TOLV_BASE_EXPORT bool ver_is_beta();
