#include "clsid.h"
#include "dcl.h"
#include "put.h"
#include "test_environment.h"
#include "tst.h"
#include "ver.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <vector>

// ---- Version --------------------------------------------------------------------------------------------------------

TEST(ver, the_product_is_norvane)
{
    EXPECT_EQ("Norvane", ver_get_product_name());
}

TEST(ver, the_texts_are_made_of_number_build_and_kind)
{
    const std::string number = ver_get_version_number();
    EXPECT_TRUE(std::regex_match(number, std::regex("[0-9]+\\.[0-9]+\\.[0-9]+"))) << number;
    EXPECT_GE(ver_get_build_number(), 0);
    EXPECT_EQ("Version " + number, ver_get_version_string());
    EXPECT_EQ("Community Edition", ver_get_install_type_string());
    const std::string full =
        "Version " + number + " Build " + std::to_string(ver_get_build_number()) + " Community Edition";
    EXPECT_EQ(full, ver_get_full_version(false));
    const std::string dated = ver_get_full_version(true);
    ASSERT_EQ(full + " ", dated.substr(0, full.size() + 1));
    EXPECT_TRUE(std::regex_match(dated.substr(full.size() + 1), std::regex("20[0-9]{2}-[01][0-9]-[0-3][0-9]")))
        << dated;
}

TEST(ver, the_configuration_names_the_kind_of_the_installation)
{
    {
        const SCOPED_CONFIGURATION value("install_type", "Site Edition");
        EXPECT_EQ("Site Edition", ver_get_install_type_string());
        EXPECT_EQ(ver_get_version_string() + " Build " + std::to_string(ver_get_build_number()) + " Site Edition",
                  ver_get_full_version(false));
    }
    const SCOPED_CONFIGURATION value("install_type", "");
    EXPECT_EQ("Community Edition", ver_get_install_type_string());
}

TEST(ver, patches_are_listed_as_configured)
{
    EXPECT_EQ("", ver_get_acs_patches_string());
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"1.01", "1.01"}, {"1.01,1.02", "1.01, 1.02"}, {" 1.01 ,, 1.02 b , ", "1.01, 1.02 b"}, {" , ", ""}, {"", ""}};
    for (const auto& [given, shown] : rows)
    {
        const SCOPED_CONFIGURATION value("installed_patches", given);
        EXPECT_EQ(shown, ver_get_acs_patches_string()) << given;
    }
}

TEST(ver, a_version_0_or_the_switch_makes_a_beta)
{
    EXPECT_EQ(ver_get_version_number().substr(0, 2) == "0.", ver_is_beta());
    const SCOPED_CONFIGURATION value("beta_version", "1");
    EXPECT_TRUE(ver_is_beta());
}

// ---- Modes of the process -------------------------------------------------------------------------------------------

TEST(dcl, the_alternative_mode_follows_the_environment_at_every_call)
{
    EXPECT_FALSE(DCL_ENV::is_alt_mode());
    for (const char* text : {"1", "on", "00", "no", " "})
    {
        const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_ALT_MODE", text);
        EXPECT_TRUE(DCL_ENV::is_alt_mode()) << text;
    }
    for (const char* text : {"", "0"})
    {
        const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_ALT_MODE", text);
        EXPECT_FALSE(DCL_ENV::is_alt_mode()) << text;
    }
}

TEST(tst, the_regression_mode_follows_the_environment_at_every_call)
{
    EXPECT_FALSE(tst_is_regtest_mode());
    for (const char* text : {"1", "on", "00", "no", " "})
    {
        const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_REGTEST", text);
        EXPECT_TRUE(tst_is_regtest_mode()) << text;
    }
    for (const char* text : {"", "0"})
    {
        const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_REGTEST", text);
        EXPECT_FALSE(tst_is_regtest_mode()) << text;
    }
}

TEST(tst, the_switch_turns_the_regression_mode_on_as_well)
{
    {
        const SCOPED_CONFIGURATION value("regtest_mode", "1");
        EXPECT_TRUE(tst_is_regtest_mode());
        const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_REGTEST", "0");
        EXPECT_TRUE(tst_is_regtest_mode());
    }
    const SCOPED_CONFIGURATION value("regtest_mode", "0");
    EXPECT_FALSE(tst_is_regtest_mode());
    const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_REGTEST", "1");
    EXPECT_TRUE(tst_is_regtest_mode());
}

// ---- Processors -----------------------------------------------------------------------------------------------------

TEST(put, the_budget_is_one_processor_at_first)
{
    EXPECT_FALSE(PUT_PROCESSOR_MANAGER::is_initialized());
    EXPECT_EQ(1, PUT_PROCESSOR_MANAGER::get_core_count());
    EXPECT_EQ(1, PUT_PROCESSOR_MANAGER::get_logical_count());
}

TEST(put, the_last_budget_holds)
{
    PUT_PROCESSOR_MANAGER::initialize(32, 48);
    EXPECT_TRUE(PUT_PROCESSOR_MANAGER::is_initialized());
    EXPECT_EQ(32, PUT_PROCESSOR_MANAGER::get_core_count());
    EXPECT_EQ(48, PUT_PROCESSOR_MANAGER::get_logical_count());
    PUT_PROCESSOR_MANAGER::initialize(4, 2);
    EXPECT_EQ(4, PUT_PROCESSOR_MANAGER::get_core_count());
    EXPECT_EQ(2, PUT_PROCESSOR_MANAGER::get_logical_count());
}

TEST(put, a_budget_below_1_counts_as_1)
{
    PUT_PROCESSOR_MANAGER::initialize(0, -3);
    EXPECT_EQ(1, PUT_PROCESSOR_MANAGER::get_core_count());
    EXPECT_EQ(1, PUT_PROCESSOR_MANAGER::get_logical_count());
}

// ---- Document classes -----------------------------------------------------------------------------------------------

TEST(clsid, an_identifier_is_a_plain_value_of_16_bytes)
{
    EXPECT_EQ(16u, sizeof(CLSID));
    EXPECT_TRUE(std::is_trivially_copyable_v<CLSID>);
    EXPECT_TRUE((std::is_same_v<CLSID, _GUID>));
}

TEST(clsid, the_null_identifier_is_all_zero)
{
    EXPECT_EQ(CLSID{}, FIO_CLSID_NULL);
}

TEST(clsid, all_document_classes_differ)
{
    const std::set<CLSID> all = {
        FIO_CLSID_NULL,
        TOLF_CLSID_CONSTRAINT_DEFAULT_DOC,
        TOLF_CLSID_PACKAGE_DEFAULT_DOC,
        TOLF_CLSID_FLOORPLAN_DEFAULT_DOC,
        TOLF_CLSID_PROPERTY_DEFAULT_DOC,
        TOLF_CLSID_NETLIST_DEFAULT_DOC,
        TOLF_CLSID_NETLIST_MAP_VIEW_DOC,
        TOLF_CLSID_NETLIST_TIMING_VIEW_DOC,
        TOLF_CLSID_WAVE_DEFAULT_DOC,
        TOLF_CLSID_BLOCK_DEFAULT_DOC,
        TOLF_CLSID_STATE_DEFAULT_DOC,
        TOLF_CLSID_ANALYSIS_DEFAULT_DOC,
    };
    EXPECT_EQ(12u, all.size());
}

TEST(clsid, comparison_sees_every_byte)
{
    const CLSID original = TOLF_CLSID_NETLIST_DEFAULT_DOC;
    CLSID copy = original;
    EXPECT_TRUE(copy == original);
    EXPECT_FALSE(copy != original);
    EXPECT_FALSE(copy < original);
    for (std::size_t i = 0; i < sizeof(CLSID); ++i)
    {
        copy = original;
        reinterpret_cast<unsigned char*>(&copy)[i] ^= 0x80;
        EXPECT_FALSE(copy == original) << i;
        EXPECT_TRUE(copy != original) << i;
        EXPECT_NE(copy < original, original < copy) << i;
    }
}
