#pragma once

#include "preferences_dialog.h"
#include "preferences_page.h"
#include "preferences_preview.h"
#include "workbench_window.h"

#include "cfgq_registry.h"
#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"
#include "tolv_color.h"
#include "tolv_gdi_manager.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeView>

#include <memory>

inline QColor get_color(TOLV_COLOR_RESOURCE resource)
{
    return TOLV_COLOR(resource).get_color();
}

inline CFGQ_REGISTRY_KEY get_registry()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

inline bool is_stored(const char* name)
{
    return get_registry().get_value(QString::fromLatin1(name), nullptr);
}

/// The drawing resources as the next start makes them.
inline void restart_resources()
{
    tolv_delete_gdi_manager();
    tolv_create_gdi_manager();
    TEST_APPLICATION::set_test_font();
}
/// The workbench with its preferences open.
class PREFERENCES_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        for (const QString& name : get_registry().get_value_names())
            get_registry().remove(name);
        start();
    }

    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    void start()
    {
        m_window.reset();
        restart_resources();
        m_window = std::make_unique<WORKBENCH_WINDOW>();
        app().set_main_window(m_window.get());
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    }

    void open(PREFERENCES_DIALOG::PAGE page = PREFERENCES_DIALOG::PAGE_COLORS)
    {
        m_dialog = m_window->open_preferences();
        m_dialog->resize(780, 560); // fits on the screen
        m_dialog->move(0, 0);
        m_dialog->set_page(page);
        m_page = m_dialog->get_page(page);
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return m_dialog->isActiveWindow(); }));
    }

    void open_at(const char* row)
    {
        open();
        ASSERT_TRUE(m_dialog->select(QString::fromLatin1(row))) << row;
        auto* const tabs = find_in<QTabWidget>(m_dialog, "preferences_tabs");
        m_page = static_cast<PREFERENCES_PAGE*>(tabs->currentWidget());
        GUI_DRIVER::process_posted();
    }

    template <typename T>
    static T* find_in(const QObject* parent, const char* object_name)
    {
        return GUI_DRIVER::find_widget<T>(parent, QString::fromLatin1(object_name));
    }

    /// A widget of the page that is shown.
    template <typename T>
    T* find(const char* object_name) const
    {
        return find_in<T>(m_page, object_name);
    }

    void press(const char* button) const
    {
        GUI_DRIVER::click(find_in<QPushButton>(m_dialog, button));
    }

    void save()
    {
        press("save_button");
        EXPECT_TRUE(m_dialog.isNull());
    }

    void type_color(const QString& text) const
    {
        auto* const field = find<QLineEdit>("color_text");
        ASSERT_TRUE(GUI_DRIVER::focus(field));
        field->selectAll();
        GUI_DRIVER::type(field, text);
    }

    void search(const QString& text) const
    {
        auto* const field = find<QLineEdit>("search");
        ASSERT_TRUE(GUI_DRIVER::focus(field));
        field->selectAll();
        GUI_DRIVER::type(field, text);
    }

    /// Titles of the rows that are shown, behind those of their tools.
    QStringList get_shown() const
    {
        const QAbstractItemModel* const model = find<QTreeView>("rows")->model();
        QStringList rows;
        for (int group = 0; group < model->rowCount(); ++group)
        {
            const QModelIndex parent = model->index(group, 0);
            for (int row = 0; row < model->rowCount(parent); ++row)
                rows.append(parent.data().toString() + "/" + model->index(row, 0, parent).data().toString());
        }
        return rows;
    }

    QString get_state_of_row() const
    {
        const QModelIndex index = find<QTreeView>("rows")->currentIndex();
        return index.sibling(index.row(), 2).data().toString();
    }

    QString get_state() const
    {
        return find_in<QLabel>(m_dialog, "state_label")->text();
    }

    QImage render_preview() const
    {
        return render_widget(find<QWidget>("canvas"));
    }

    /// How much of a sample has the colour.
    int count_in_sample(int resource, const QColor& color) const
    {
        const auto* const canvas = find<PREFERENCES_CANVAS>("canvas");
        return count_pixels(render_preview(), color, 0, canvas->get_rect(resource));
    }

    /// By a key: a button of the mouse would still be held when the menu is up.
    void open_reset_menu() const
    {
        auto* const button = find<QPushButton>("reset_button");
        ASSERT_TRUE(GUI_DRIVER::focus(button));
        GUI_DRIVER::key_click(button, Qt::Key_Space);
    }

    void reset(const char* what) const
    {
        answer_next_menu(QString::fromLatin1(what));
        open_reset_menu();
    }

    std::unique_ptr<WORKBENCH_WINDOW> m_window;
    QPointer<PREFERENCES_DIALOG> m_dialog;
    PREFERENCES_PAGE* m_page = nullptr;
};
