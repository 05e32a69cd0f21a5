#pragma once

#include "netlist.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Makes a NETLIST of the pieces that a JSON parser delivers one after another. It is told of each value as it comes
/// and keeps no tree, so its memory is that of the netlist. What does not belong where it stands ends the work: the
/// operation returns false, and get_reason() and get_place() say why and where. Fields that it does not know are skipped,
/// whatever they hold.
class NETLIST_BUILDER
{
public:
    /// Deepest nesting of lists and objects, in what is skipped as well.
    static constexpr int DEEPEST_LEVEL = 64;

    /// @param netlist receives the modules; must outlive this object
    explicit NETLIST_BUILDER(NETLIST& netlist);

    /// Ends the work with that reason where a certain cell begins: for trouble that only the whole netlist shows, so that
    /// a second run tells where it lies.
    void refuse_cell(std::uint32_t module, std::uint32_t cell, const std::string& reason);

    bool add_null();
    bool add_boolean(bool value);
    /// A whole number.
    bool add_integer(std::int64_t value);
    bool add_unsigned(std::uint64_t value);
    /// Any other number.
    bool add_float(std::string_view text);
    bool add_text(std::string_view value);
    bool add_key(std::string_view key);
    bool begin_object();
    bool end_object();
    bool begin_list();
    bool end_list();

    /// Whether a whole netlist has come.
    bool is_complete() const;
    /// What is wrong; empty while nothing is.
    const std::string& get_reason() const;
    /// The way to the value at hand: "modules/uart/cells/$1/connections/A/0".
    std::string get_place() const;

private:
    /// What an object or list of the file is.
    enum class CONTEXT : std::uint8_t
    {
        NONE,
        TOP,
        MODULES,
        MODULE,
        PORTS,
        PORT,
        CELLS,
        CELL,
        PORT_DIRECTIONS,
        CONNECTIONS,
        NETS,
        NET,
        PROPERTIES,
        BITS
    };
    /// What a value has to be.
    enum class KIND : std::uint8_t
    {
        ANY,
        OBJECT,
        LIST,
        TEXT,
        INTEGER,
        SCALAR, ///< a text or a whole number
        BIT     ///< a net number or a constant
    };
    /// Which value it is, where it goes to a place of its own.
    enum class FIELD : std::uint8_t
    {
        NONE,
        CREATOR,
        TYPE,
        DIRECTION,
        PORT_DIRECTION,
        HIDE_NAME,
        OFFSET,
        UPTO,
        PROPERTY,
        BIT
    };
    struct SLOT
    {
        KIND kind;
        CONTEXT child; ///< of an object or a list
        FIELD field;   ///< of a scalar
    };
    struct FIELD_ROW
    {
        const char* key; ///< null for any
        CONTEXT context;
        SLOT slot;
    };
    struct FRAME
    {
        CONTEXT context = CONTEXT::NONE;
        NETLIST_NAME key = NETLIST_NAMES::NONE; ///< the key at hand in an object
        std::uint32_t count = 0;                ///< elements so far in a list
        std::uint32_t serial = 0;               ///< tells this object's keys from those of others at its level
    };
    struct PORT_DIRECTION
    {
        std::uint32_t cell_serial = 0;
        NETLIST_DIRECTION direction = NETLIST_DIRECTION::UNKNOWN;
    };

    static SLOT find_slot(CONTEXT context, std::string_view key);

    bool fail(std::string reason);
    bool fail_kind(const char* found);
    bool begin_container(KIND kind, const char* found);
    bool end_container();
    bool is_refused(CONTEXT context) const;
    bool check_duplicate(NETLIST_NAME key);
    void begin_context(CONTEXT context);
    bool end_context(CONTEXT context);
    bool end_cell();
    void take_port_directions();
    bool set_text(std::string_view value);
    bool set_integer(std::int64_t value);
    bool set_direction(std::string_view value);
    bool add_bit(NETLIST_BIT bit);
    bool fail_missing(const char* field);
    NETLIST_MODULE& get_module();
    NETLIST_RANGE& get_bits_owner();
    NETLIST_RANGE& get_properties_owner();

    NETLIST& m_netlist;
    std::vector<FRAME> m_frames;
    SLOT m_slot; ///< what the next value has to be
    int m_skipped_levels = 0;
    bool m_is_complete = false;
    std::string m_reason;
    std::uint32_t m_refused_module = NETLIST_CELL::NO_MODULE;
    std::uint32_t m_refused_cell = 0;
    std::string m_refusal;

    std::uint32_t m_next_serial = 1;
    std::vector<std::vector<std::uint32_t>> m_seen_keys; ///< per level and name: the serial of the object it stood in
    std::vector<PORT_DIRECTION> m_port_directions;       ///< by name
    std::uint32_t m_cell_serial = 0;

    // Which fields the object at hand has.
    bool m_has_modules = false;
    bool m_has_type = false;
    bool m_has_direction = false;
    bool m_has_bits = false;
    bool m_has_port_directions = false;
};
