#include <tolv_app.h>
#include <tolv_global.h>

#include <cfgq_registry.h>
#include <ver.h>

#include <QLabel>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>

namespace
{
/// The host's application: it knows the main window.
class EXAMPLE_APP : public TOLV_APP
{
    Q_OBJECT

public:
    using TOLV_APP::TOLV_APP;

    QWidget* get_main_window() override
    {
        return m_main_window;
    }

    void show_main_window()
    {
        m_main_window = new QMainWindow;
        m_main_window->setCentralWidget(new QLabel(QString::fromStdString(ver_get_product_name())));
        m_main_window->show();
    }

    void close_main_window()
    {
        delete m_main_window;
        m_main_window = nullptr;
    }

private:
    QMainWindow* m_main_window = nullptr;
};

bool is_true(bool condition, const char* what)
{
    if (!condition)
        fprintf(stderr, "failed: %s\n", what);
    return condition;
}

/// What a host can rely on while it runs.
bool check(EXAMPLE_APP* app)
{
    CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "example");
    QVariant value;
    return is_true(tolv_get_app() == app, "the application is found") &
           is_true(app->get_main_window() != nullptr && app->get_main_window()->isVisible(), "the window is shown") &
           is_true(tolv_string_cmp(QStringLiteral("10"), QStringLiteral("9")) > 0, "numbers sort as numbers") &
           is_true(key.set_value(QStringLiteral("runs"), 1), "the registry can be written") &
           is_true(key.get_value(QStringLiteral("runs"), &value) && value.toInt() == 1, "and read");
}
} // namespace

int main(int argc, const char** argv)
{
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, argv);
    int qt_argc = argc;
    bool good = false;
    {
        EXAMPLE_APP app(qt_argc, qt_argv);
        app.init_instance(argc, argv);
        app.show_main_window();
        QTimer::singleShot(0, &app,
                           [&]
                           {
                               good = check(&app);
                               app.quit();
                           });
        app.exec();
        app.close_main_window();
        app.exit_instance();
    }
    good = is_true(tolv_get_app() == nullptr, "the application is gone") && good;
    if (good)
        puts("the example ran from start to end");
    return good ? 0 : 1;
}

#include "main.moc"
