#include "command_line.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace
{
constexpr int LARGEST_SIZE = 16000; // pixels
constexpr double LARGEST_SCALE = 8;

/// Options of Qt's own with a value behind them.
bool is_qt_option_with_value(const std::string& option)
{
    static const char* const options[] = {"-display",       "-fontengine", "-platform",        "-platformpluginpath",
                                          "-platformtheme", "-plugin",     "-qwindowgeometry", "-geometry",
                                          "-qwindowicon",   "-icon",       "-qwindowtitle",    "-title",
                                          "-session",       "-style",      "-stylesheet"};
    return std::any_of(std::begin(options), std::end(options),
                       [&option](const char* each) { return option == each || option == std::string("-") + each; });
}

/// The parser's state.
class PARSER
{
public:
    PARSER(int argc, const char* const* argv)
    {
        for (int i = 1; argv != nullptr && i < argc && argv[i] != nullptr; ++i)
            m_arguments.emplace_back(argv[i]);
    }

    COMMAND_LINE parse()
    {
        bool only_files = false;
        for (; m_at < m_arguments.size() && m_result.error.empty(); ++m_at)
        {
            const std::string argument = m_arguments[m_at];
            if (!only_files && argument == "--")
                only_files = true;
            else if (only_files || argument.size() < 2 || argument.front() != '-')
                take_file(argument);
            else
                take_option(argument);
        }
        return m_result;
    }

private:
    void take_file(const std::string& file)
    {
        if (file.empty())
            m_result.error = "the name of the file is empty";
        else if (!m_result.file.empty())
            m_result.error = "there is more than one file: \"" + m_result.file + "\" and \"" + file + "\"";
        m_result.file = file;
    }

    void take_option(const std::string& argument)
    {
        const std::size_t equals = argument.find('=');
        const std::string option = argument.substr(0, equals);
        m_has_value = equals != std::string::npos;
        m_value = m_has_value ? argument.substr(equals + 1) : std::string();
        if (option == "--help" || option == "-h")
            m_result.wants_help = take_no_value(option);
        else if (option == "--version" || option == "-v")
            m_result.wants_version = take_no_value(option);
        else if (option == "--dark")
            m_result.is_dark = take_no_value(option);
        else if (option == "--preferences")
            take_place(option, "colours", m_result.preferences);
        else if (option == "--gallery")
            take_place(option, "actions", m_result.gallery);
        else if (option == "--screenshot")
            take_value(option, m_result.screenshot);
        else if (option == "--select")
            take_value(option, m_result.select);
        else if (option == "--document")
            take_document(option);
        else if (option == "--size")
            take_size(option);
        else if (option == "--scale")
            take_scale(option);
        else if (is_qt_option_with_value(option))
            m_at += m_has_value ? 0 : 1;
        else if (option != "-reverse" && option != "--reverse")
            m_result.error = "unknown option \"" + argument + "\"";
    }

    bool take_no_value(const std::string& option)
    {
        if (m_has_value)
            m_result.error = "the option \"" + option + "\" takes no value";
        return true;
    }

    bool take_value(const std::string& option, std::string& value)
    {
        if (!m_has_value && m_at + 1 < m_arguments.size())
            m_value = m_arguments[++m_at];
        value = m_value;
        if (value.empty())
            m_result.error = "the option \"" + option + "\" needs a value";
        return !value.empty();
    }

    void take_document(const std::string& option)
    {
        std::string& document = m_result.document;
        const char* const documents[] = {"schematic", "tables", "floorplan", "hierarchy"};
        if (take_value(option, document) &&
            std::find(std::begin(documents), std::end(documents), document) == std::end(documents))
            m_result.error =
                "\"" + document + "\" is no document: \"schematic\", \"tables\", \"floorplan\" and \"hierarchy\" are";
    }

    /// An option that opens a window, with or without a place in it.
    void take_place(const std::string& option, const char* usual_place, std::string& place)
    {
        place = m_has_value ? m_value : usual_place;
        if (place.empty())
            m_result.error = "the option \"" + option + "\" needs a value behind \"=\"";
        else if (!m_result.preferences.empty() && !m_result.gallery.empty())
            m_result.error = "\"--preferences\" and \"--gallery\" do not go together";
    }

    void take_size(const std::string& option)
    {
        std::string value;
        if (!take_value(option, value))
            return;
        int length = 0;
        const int count = std::sscanf(value.c_str(), "%5dx%5d%n", &m_result.width, &m_result.height, &length);
        if (count != 2 || length != static_cast<int>(value.size()) || std::min(m_result.width, m_result.height) < 1 ||
            std::max(m_result.width, m_result.height) > LARGEST_SIZE)
            m_result.error = "\"" + value + "\" is no size: such as 1280x800, at most 16000 either way, is";
    }

    void take_scale(const std::string& option)
    {
        std::string value;
        if (!take_value(option, value))
            return;
        char* end = nullptr;
        m_result.scale = std::strtod(value.c_str(), &end);
        if (*end != '\0' || !(m_result.scale >= 0.5 && m_result.scale <= LARGEST_SCALE))
            m_result.error = "\"" + value + "\" is no scale: a number from 0.5 to 8 is";
    }

    std::vector<std::string> m_arguments;
    std::size_t m_at = 0;
    bool m_has_value = false; ///< the option at hand has a value behind "="
    std::string m_value;
    COMMAND_LINE m_result;
};
} // namespace

COMMAND_LINE COMMAND_LINE::parse(int argc, const char* const* argv)
{
    return PARSER(argc, argv).parse();
}

std::string COMMAND_LINE::get_help()
{
    return "Usage: norvane_workbench [OPTION]... [FILE]\n"
           "Shows a netlist that yosys (write_json) or nextpnr (--write) wrote. Without FILE: the shipped design.\n"
           "\n"
           "  --screenshot PICTURE  write a picture of the window, as PNG, and end; needs no display\n"
           "  --select PATH         choose an instance, by the names from the top down: top/u_uart/u_rx_fifo\n"
           "  --document WHAT       bring \"schematic\", \"tables\", \"floorplan\" or \"hierarchy\" to the front\n"
           "  --preferences[=WHAT]  open the preferences, at \"colours\", \"fonts\", \"lines\" or the row of this "
           "name, such as\n"
           "                        TOLV_MSW_ERROR_COLOR; a screenshot shows them alone\n"
           "  --gallery[=WHAT]      open the gallery of all that the library has by name, at \"actions\", \"icons\", "
           "\"cursors\",\n"
           "                        \"pixmaps\", \"movies\", \"colours\", \"pens\", \"brushes\", \"fonts\" or a name, "
           "such "
           "as\n"
           "                        TOLV_COPY_ICON; a screenshot shows it alone\n"
           "  --size WxH            size in pixels of the window, or of the preferences or the gallery\n"
           "  --scale N             draw everything N times as large\n"
           "  --dark                light text on dark ground\n"
           "  -h, --help            show this text and end\n"
           "  -v, --version         show the version and end\n"
           "\n"
           "Exit status: 0 where all went well, 1 where something failed, 2 for a command line that makes no sense.\n";
}
