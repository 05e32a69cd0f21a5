#pragma once

#include <string>
#include <vector>

/// What the command line of the workbench asks for.
struct COMMAND_LINE
{
    std::string file;       ///< netlist to open; empty for the shipped design
    std::string screenshot; ///< picture to write; empty for an ordinary run
    std::string select;     ///< instance to choose: names from the top down, divided by "/"
    std::string
        document; ///< what to bring to the front: "schematic", "tables", "floorplan" or "hierarchy"; empty for the usual
    int width = 0; ///< size in pixels of the window, or of the preferences or the gallery; 0 for the usual one
    int height = 0;
    double scale = 0; ///< pixels per unit; 0 for what the display says
    bool is_dark = false;
    std::string preferences; ///< what to show of them, as PREFERENCES_DIALOG::select() has it; empty for none
    std::string gallery;     ///< what to show of it, as GALLERY_WINDOW::select() has it; empty for none
    bool wants_help = false;
    bool wants_version = false;
    std::string error; ///< what cannot be understood; empty where all can

    /// Reads the arguments; the first is the program's name. Options that Qt knows pass by. A null or empty `argv` is an
    /// empty command line.
    static COMMAND_LINE parse(int argc, const char* const* argv);

    /// The text of `--help`.
    static std::string get_help();
};
