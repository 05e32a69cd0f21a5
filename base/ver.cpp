#include "ver.h"

#include "cfg.h"

#include <sstream>

std::string ver_get_product_name()
{
    return "Norvane";
}

std::string ver_get_full_version(bool include_date)
{
    std::string version = ver_get_version_string() + " Build " + std::to_string(ver_get_build_number()) + " " +
                          ver_get_install_type_string();
    if (include_date)
        version += " " TOLV_BUILD_DATE;
    return version;
}

std::string ver_get_version_string()
{
    return "Version " + ver_get_version_number();
}

std::string ver_get_version_number()
{
    return TOLV_VERSION;
}

int ver_get_build_number()
{
    return TOLV_BUILD_NUMBER;
}

std::string ver_get_install_type_string()
{
    const std::string type = cfg_get_string_value("install_type");
    return type.empty() ? "Community Edition" : type;
}

std::string ver_get_acs_patches_string()
{
    std::istringstream list(cfg_get_string_value("installed_patches"));
    std::string patches;
    for (std::string patch; std::getline(list, patch, ',');)
    {
        const std::size_t first = patch.find_first_not_of(" \t");
        if (first == std::string::npos)
            continue;
        if (!patches.empty())
            patches += ", ";
        patches += patch.substr(first, patch.find_last_not_of(" \t") - first + 1);
    }
    return patches;
}

bool ver_is_beta()
{
    return ver_get_version_number().compare(0, 2, "0.") == 0 || cfg_is_on("beta_version");
}
