#pragma once

#include "base_export.h"

#include <list>
#include <string>
#include <vector>

/// Files of the suite: types, extensions, paths, the current directory. Texts are in the local 8-bit encoding.

/// Types of files that the tools know. Values are stored data and never change.
enum FIO_FILE_TYPE
{
    FIO_FILE_TYPE_UNKNOWN = 0,
    FIO_FILE_TYPE_VERILOG,
    FIO_FILE_TYPE_SYSTEMVERILOG,
    FIO_FILE_TYPE_VERILOG_INCLUDE,
    FIO_FILE_TYPE_VHDL,
    FIO_FILE_TYPE_EDIF,
    FIO_FILE_TYPE_BLIF,
    FIO_FILE_TYPE_JSON_NETLIST,
    FIO_FILE_TYPE_PLACED_NETLIST,
    FIO_FILE_TYPE_SCHEMATIC,
    FIO_FILE_TYPE_STATE_MACHINE,
    FIO_FILE_TYPE_BLOCK_DIAGRAM,
    FIO_FILE_TYPE_QUALIFIED_IP,
    FIO_FILE_TYPE_SYSTEM_DESIGN,
    FIO_FILE_TYPE_CONSTRAINTS,
    FIO_FILE_TYPE_PIN_CONSTRAINTS,
    FIO_FILE_TYPE_TCL_SCRIPT,
    FIO_FILE_TYPE_SETTINGS,
    FIO_FILE_TYPE_PROJECT,
    FIO_FILE_TYPE_MEMORY_HEX,
    FIO_FILE_TYPE_MEMORY_INIT,
    FIO_FILE_TYPE_WAVEFORM,
    FIO_FILE_TYPE_VALUE_CHANGE_DUMP,
    FIO_FILE_TYPE_SIGNAL_PROBE,
    FIO_FILE_TYPE_BITSTREAM,
    FIO_FILE_TYPE_PROGRAMMING,
    FIO_FILE_TYPE_C_SOURCE,
    FIO_FILE_TYPE_CPP_SOURCE,
    FIO_FILE_TYPE_C_HEADER,
    FIO_FILE_TYPE_CPP_HEADER,
    FIO_FILE_TYPE_REPORT,
    FIO_FILE_TYPE_LOG,
    FIO_FILE_TYPE_TEXT,
    FIO_FILE_TYPE_HTML,
    FIO_FILE_TYPE_XML,
    FIO_FILE_TYPE_COUNT
};

/// Extensions, each with its dot. Several types can share one.
enum FIO_EXTENSION_TYPE
{
    FIO_EXTENSION_NONE = 0,
    FIO_EXTENSION_V,
    FIO_EXTENSION_VH,
    FIO_EXTENSION_SV,
    FIO_EXTENSION_SVH,
    FIO_EXTENSION_VHD,
    FIO_EXTENSION_VHDL,
    FIO_EXTENSION_EDF,
    FIO_EXTENSION_EDIF,
    FIO_EXTENSION_BLIF,
    FIO_EXTENSION_JSON,
    FIO_EXTENSION_SCH,
    FIO_EXTENSION_SMF,
    FIO_EXTENSION_BDF,
    FIO_EXTENSION_IP,
    FIO_EXTENSION_SYS,
    FIO_EXTENSION_SDC,
    FIO_EXTENSION_PCF,
    FIO_EXTENSION_TCL,
    FIO_EXTENSION_NSF,
    FIO_EXTENSION_NPF,
    FIO_EXTENSION_HEX,
    FIO_EXTENSION_MIF,
    FIO_EXTENSION_VWF,
    FIO_EXTENSION_VCD,
    FIO_EXTENSION_FST,
    FIO_EXTENSION_STP,
    FIO_EXTENSION_ASC,
    FIO_EXTENSION_BIN,
    FIO_EXTENSION_BIT,
    FIO_EXTENSION_C,
    FIO_EXTENSION_CPP,
    FIO_EXTENSION_CC,
    FIO_EXTENSION_H,
    FIO_EXTENSION_HPP,
    FIO_EXTENSION_RPT,
    FIO_EXTENSION_LOG,
    FIO_EXTENSION_TXT,
    FIO_EXTENSION_HTML,
    FIO_EXTENSION_HTM,
    FIO_EXTENSION_XML,
    FIO_EXTENSION_COUNT
};

/// Classes of file types; a type can belong to several.
enum FIO_FILE_TYPE_FLAG
{
    FIO_FILE_TYPE_FLAG_DESIGN = 0x01,      ///< design sources
    FIO_FILE_TYPE_FLAG_NETLIST = 0x02,     ///< what the workbench opens
    FIO_FILE_TYPE_FLAG_CONSTRAINTS = 0x04, ///< timing and placement constraints
    FIO_FILE_TYPE_FLAG_SCRIPT = 0x08,      ///< scripts and settings
    FIO_FILE_TYPE_FLAG_MEMORY = 0x10,      ///< memory contents
    FIO_FILE_TYPE_FLAG_SIMULATION = 0x20,  ///< stimuli and recorded waves
    FIO_FILE_TYPE_FLAG_PROGRAMMING = 0x40, ///< what goes to the device
    FIO_FILE_TYPE_FLAG_SOFTWARE = 0x80,    ///< C and C++
    FIO_FILE_TYPE_FLAG_DOCUMENT = 0x100    ///< reports and texts
};

/// The editor that opens a type.
enum FIO_EDITOR_TYPE
{
    FIO_EDITOR_TYPE_ANY = 0, ///< in queries: whichever
    FIO_EDITOR_TYPE_TEXT,
    FIO_EDITOR_TYPE_GRAPHIC,
    FIO_EDITOR_TYPE_MEMORY,
    FIO_EDITOR_TYPE_WAVE,
    FIO_EDITOR_TYPE_NONE
};

/// An extension's text with its dot (".v"); empty for FIO_EXTENSION_NONE and unknown values.
TOLV_BASE_EXPORT std::string fio_get_extension_string(FIO_EXTENSION_TYPE extension);

/// A type's extension for new files; FIO_EXTENSION_NONE for unknown types.
TOLV_BASE_EXPORT FIO_EXTENSION_TYPE fio_get_default_extension_type(FIO_FILE_TYPE type);

/// A type's line in a file dialog: "VHDL File (*.vhd *.vhdl)"; with `upper_case_too` each pattern also in capitals,
/// "VHDL File (*.vhd *.VHD *.vhdl *.VHDL)". Empty for FIO_FILE_TYPE_UNKNOWN and unknown values.
TOLV_BASE_EXPORT std::string fio_get_file_type_filter(FIO_FILE_TYPE type, bool upper_case_too);

/// What a type is called: "VHDL File". Empty for FIO_FILE_TYPE_UNKNOWN and unknown values.
TOLV_BASE_EXPORT std::string fio_get_file_type_string(FIO_FILE_TYPE type);

/// What a class of types is called: "Design Files". Empty for unknown values.
TOLV_BASE_EXPORT std::string fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG flag);

/// The type of a file by its name's extension, in any letter case; FIO_FILE_TYPE_UNKNOWN where none fits. Where an
/// extension is shared the type with the lowest value wins.
TOLV_BASE_EXPORT FIO_FILE_TYPE fio_get_file_type(const std::string& file_name);

/// The table of extensions.
class TOLV_BASE_EXPORT FIO_EXTENSION_TYPE_INFO
{
public:
    /// All extensions of a type into `*list` (replacing what it held), the default one first; none for unknown types. A
    /// null list is the internal error "list != NULL".
    static void get_extension_type_list(FIO_FILE_TYPE type, std::list<FIO_EXTENSION_TYPE>* list);
};

/// The table of types.
class TOLV_BASE_EXPORT FIO_FILE_TYPE_INFO
{
public:
    /// All types of a class that the editor opens into `*list` (replacing what it held), by value. A null list is the
    /// internal error "list != NULL".
    static void get_file_type_list(FIO_FILE_TYPE_FLAG flag, FIO_EDITOR_TYPE editor, std::list<FIO_FILE_TYPE>* list);
};

/// A path as a value: a directory part and a file name part, of any bytes. A path whose last segment is empty ("a/"),
/// "." or ".." has no file name part. Building one and taking it apart touches no file.
class TOLV_BASE_EXPORT FIO_PATH
{
public:
    FIO_PATH();
    /// A file's path, or with a trailing "/" a directory's.
    explicit FIO_PATH(const std::string& path);

    /// The file name part with its extension; empty for a directory.
    std::string filename() const;
    /// Replaces the file name part. Of a name with "/" the part behind the last one counts; "." and ".." clear it.
    void set_filename(const std::string& name);
    /// Removes the file name part: the path is its directory.
    void clear_filename();
    /// The file name part without its last extension.
    std::string base() const;
    /// The last extension with its dot ("." for a name that ends in one); empty for none. A name that begins with its only
    /// dot has none. base() and extension() together are filename().
    std::string extension() const;
    bool has_extension() const;
    bool has_filename() const;
    /// The directory part, without a trailing "/" except for the root; empty for a bare file name.
    std::string directory() const;
    bool has_directory() const;
    /// Goes into a directory below, or up with ".."; an absolute one replaces the directory part. The file name part
    /// stays. An empty text changes nothing.
    void cd(const std::string& directory);
    /// Takes out ".", "x/.." and doubled "/" by text alone, without looking at the disk. Above the root lies the root; what
    /// leads above the start of a relative path stays.
    void flatten();
    /// The whole path, made absolute by the current directory, flattened, without a trailing "/" except for the root; empty
    /// for an empty path. Where the current directory no longer exists a relative path stays relative.
    std::string fullpath() const;
    /// The whole path as it stands; a directory ends in "/".
    std::string path() const;
    bool is_empty() const;
    /// Whether a file or directory of this path exists; false for a path with a NUL in it.
    bool exists() const;
    /// Whether two paths are the same by the system's comparison: equal full paths (case counts), or the same file.
    bool is_same(const FIO_PATH& other) const;

private:
    std::string m_directory;
    std::string m_filename;
};

/// The file system. No function takes an empty path or one with a NUL in it for an existing file.
class TOLV_BASE_EXPORT FIO_FILE_SYSTEM
{
public:
    /// The process's current directory, absolute; empty where it no longer exists.
    static std::string get_current_directory();
    /// Makes a directory the current one; false where that fails, with nothing changed. The whole path counts: a file name
    /// part is the name of the directory.
    static bool set_current_directory(const FIO_PATH& directory);
    /// The same with the directory's text, absolute or relative.
    static bool change_current_directory(const std::string& directory);
    /// Whether something other than a directory exists at the path; links are followed.
    static bool file_exists(const std::string& path);
    /// Whether a directory exists at the path; links are followed.
    static bool directory_exists(const std::string& path);
    /// Whether the path exists and this process may write to it.
    static bool is_writable(const std::string& path);
};
