#include "workbench_app.h"

#include "gallery_window.h"
#include "preferences_dialog.h"
#include "tolv_gdi_manager.h"
#include "tolv_global.h"
#include "workbench_documents.h"
#include "workbench_palette.h"
#include "workbench_window.h"

#include <QDir>
#include <QFileInfo>
#include <QPixmap>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{
WORKBENCH_DOCUMENTS::DOCUMENT get_document(const std::string& name)
{
    return name == "tables"      ? WORKBENCH_DOCUMENTS::DOCUMENT_TABLES
           : name == "floorplan" ? WORKBENCH_DOCUMENTS::DOCUMENT_FLOORPLAN
           : name == "hierarchy" ? WORKBENCH_DOCUMENTS::DOCUMENT_HIERARCHY
                                 : WORKBENCH_DOCUMENTS::DOCUMENT_SCHEMATIC;
}

/// What Qt has to find in the environment before the application object is made.
void prepare_environment(const COMMAND_LINE& command_line)
{
    const bool has_display = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!command_line.screenshot.empty() && !has_display && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (command_line.scale > 0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(command_line.scale));
}
} // namespace

int WORKBENCH_APP::run(int argc, const char** argv, const COMMAND_LINE& command_line)
{
    prepare_environment(command_line);
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, argv); // lives as long as the process
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);      // icons as sharp as the screen is
    int qt_argc = argc;
    WORKBENCH_APP app(qt_argc, qt_argv);
    app.init_instance(argc, argv);
    const int status = app.run_window(command_line);
    app.exit_instance();
    return status;
}

WORKBENCH_APP::WORKBENCH_APP(int& argc, char** argv) : TOLV_APP(argc, argv)
{
    setApplicationDisplayName(QString());
}

WORKBENCH_APP::~WORKBENCH_APP() = default;

QWidget* WORKBENCH_APP::get_main_window()
{
    return m_window;
}

QString WORKBENCH_APP::find_shipped_design()
{
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/norvane_workbench/designs"));
    const QFileInfo design(folder, QStringLiteral("serial_station_synth.json"));
    return design.exists() ? design.canonicalFilePath() : QString();
}

void WORKBENCH_APP::finish_loading()
{
    const bool is_screenshot = !m_command_line.screenshot.empty();
    const QString path = QString::fromLocal8Bit(m_command_line.select.c_str());
    if (!m_window->get_load_error().isEmpty() && is_screenshot)
        fail(m_window->get_load_error());
    else if (m_window->get_netlist() != nullptr && !path.isEmpty() &&
             !m_window->select_path(path.split(QLatin1Char('/'))))
        fail(tr("there is no instance \"%1\"").arg(path));
    else if (m_command_line.document == "floorplan" && !m_window->get_documents()->has_floorplan())
        fail(tr("the design has no floorplan"));
    else if (!m_command_line.document.empty())
        m_window->get_documents()->show_document(get_document(m_command_line.document));
    if (is_screenshot && m_exit_status == 0 && m_window->get_documents()->is_drawing())
        TOLV_SAFE_CONNECT(m_window->get_documents(), SIGNAL(drawn()), this, SLOT(finish_drawing()));
    else if (is_screenshot && m_exit_status == 0)
        finish_drawing();
    // Only the file of the command line is meant.
    disconnect(m_window, SIGNAL(load_ended()), this, SLOT(finish_loading()));
}

void WORKBENCH_APP::finish_drawing()
{
    // More than one drawing can be under way.
    if (!m_window->get_documents()->is_drawing() && write_screenshot())
        exit(0);
}

int WORKBENCH_APP::run_window(const COMMAND_LINE& command_line)
{
    m_command_line = command_line;
    if (command_line.is_dark)
    {
        setPalette(workbench_get_palette(true));
        // Defaults that come from the palette are taken when the resources are made; nobody holds one yet.
        tolv_delete_gdi_manager();
        tolv_create_gdi_manager();
    }
    const auto window = std::make_unique<WORKBENCH_WINDOW>();
    m_window = window.get();
    if (command_line.width > 0 && command_line.preferences.empty() && command_line.gallery.empty())
        window->resize(command_line.width, command_line.height);
    window->setAttribute(Qt::WA_DontShowOnScreen, !command_line.screenshot.empty());
    if (command_line.screenshot.empty())
        window->keep_layout();
    window->show();
    if (!open_what_is_wanted() && !command_line.screenshot.empty())
        return EXIT_FAILURE;
    TOLV_SAFE_CONNECT(window.get(), SIGNAL(load_ended()), this, SLOT(finish_loading()));
    const QString file =
        command_line.file.empty() ? find_shipped_design() : QString::fromLocal8Bit(command_line.file.c_str());
    if (!file.isEmpty())
        window->open_file(file);
    else if (!command_line.screenshot.empty())
    {
        std::fprintf(stderr, "norvane_workbench: the shipped design is not installed\n");
        return EXIT_FAILURE;
    }
    const int status = exec();
    return status == 0 ? m_exit_status : status;
}

bool WORKBENCH_APP::open_what_is_wanted()
{
    return (m_command_line.preferences.empty() || open_preferences()) &&
           (m_command_line.gallery.empty() || open_gallery());
}

bool WORKBENCH_APP::open_preferences()
{
    m_preferences = m_window->open_preferences();
    if (m_command_line.width > 0)
        m_preferences->resize(m_command_line.width, m_command_line.height);
    const QString place = QString::fromStdString(m_command_line.preferences);
    const bool is_there = m_preferences->select(place);
    if (!is_there)
        fail(tr("there are no preferences \"%1\"").arg(place));
    return is_there;
}

bool WORKBENCH_APP::open_gallery()
{
    m_gallery = m_window->open_gallery();
    if (m_command_line.width > 0)
        m_gallery->use_size(QSize(m_command_line.width, m_command_line.height));
    const QString place = QString::fromStdString(m_command_line.gallery);
    const bool is_there = m_gallery->select(place);
    if (!is_there)
        fail(tr("the gallery has no \"%1\"").arg(place));
    return is_there;
}

bool WORKBENCH_APP::write_screenshot()
{
    processEvents(QEventLoop::ExcludeUserInputEvents); // layouts and repaints that are still due
    const QString file = QString::fromLocal8Bit(m_command_line.screenshot.c_str());
    QWidget* shown = m_window;
    if (m_preferences != nullptr)
        shown = m_preferences;
    else if (m_gallery != nullptr)
        shown = m_gallery;
    if (shown->grab().save(file, "PNG"))
        return true;
    fail(tr("the picture \"%1\" cannot be written").arg(file));
    return false;
}

void WORKBENCH_APP::fail(const QString& text)
{
    std::fprintf(stderr, "norvane_workbench: %s\n", text.toLocal8Bit().constData());
    m_exit_status = EXIT_FAILURE;
    if (!m_command_line.screenshot.empty())
        exit(EXIT_FAILURE);
}
