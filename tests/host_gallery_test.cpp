#include "gallery_model.h"
#include "gallery_page.h"
#include "gallery_preview.h"
#include "gallery_samples.h"
#include "gallery_window.h"
#include "host_workbench_fixture.h"
#include "workbench_palette.h"

#include "gui_answers.h"
#include "module_recorder.h"
#include "picture.h"
#include "tolv_action_auto.h"
#include "tolv_color.h"
#include "tolv_create_action.h"
#include "tolv_gdi_tables.h"
#include "tolv_icon.h"
#include "tolv_image.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QTextBrowser>
#include <QTreeView>
#include <QTreeWidget>

#include <memory>

namespace
{
GALLERY_KIND to_kind(int kind)
{
    return static_cast<GALLERY_KIND>(kind);
}

constexpr int COUNTS[GALLERY_KIND_COUNT] = {770, 784, 9, 22, 2, 593, 153, 194, 102};
} // namespace

/// The workbench with its gallery open.
class host_gallery : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        make_and_show_window();
        m_gallery = m_window->open_gallery();
        m_gallery->use_size(QSize(780, 560)); // fits on the screen
        m_gallery->move(0, 0);
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return m_gallery->isActiveWindow(); }));
    }

    template <typename T>
    T* find(const char* object_name) const
    {
        return GUI_DRIVER::find_widget<T>(m_gallery, QString::fromLatin1(object_name));
    }

    QAbstractItemView* view() const
    {
        return m_gallery->get_page(m_gallery->get_kind())->get_view();
    }

    void select(const char* what) const
    {
        ASSERT_TRUE(m_gallery->select(QString::fromLatin1(what))) << what;
        GUI_DRIVER::process_posted();
    }

    void search(const QString& text) const
    {
        auto* const field = find<QLineEdit>("search");
        ASSERT_TRUE(GUI_DRIVER::focus(field));
        field->clear();
        GUI_DRIVER::type(field, text);
    }

    QString get_name() const
    {
        return m_gallery->get_page(m_gallery->get_kind())->get_name();
    }

    QStringList get_names() const
    {
        QStringList names;
        for (int row = 0; row < view()->model()->rowCount(); ++row)
            names.append(view()->model()->index(row, 0).data(GALLERY_MODEL::ROLE_NAME).toString());
        return names;
    }

    QString get_count(GALLERY_KIND kind) const
    {
        return find<QTreeWidget>("kinds")->topLevelItem(kind)->text(1);
    }

    QString get_status() const
    {
        return find<QLabel>("status_label")->text();
    }

    QString get_facts() const
    {
        return find<QTextBrowser>("facts")->toPlainText();
    }

    /// The chosen row or tile as it is painted.
    QImage render_current(int column = 0) const
    {
        const QModelIndex current = view()->currentIndex();
        const QRect rect = view()->visualRect(current.sibling(current.row(), column));
        return render_widget(view()->viewport()).copy(rect);
    }

    static QString get_clipboard()
    {
        return QGuiApplication::clipboard()->text();
    }

    QPointer<GALLERY_WINDOW> m_gallery;
};

// ---- Opening --------------------------------------------------------------------------------------------------------

TEST_F(host_gallery, the_help_menu_opens_it_once)
{
    delete m_gallery;
    auto* const action = GUI_DRIVER::find_widget<QAction>(m_window.get(), QStringLiteral("gallery_action"));
    action->trigger();
    auto* const gallery = GUI_DRIVER::find_widget<GALLERY_WINDOW>(m_window.get(), QStringLiteral("gallery_window"));
    ASSERT_NE(nullptr, gallery);
    EXPECT_TRUE(gallery->isVisible());
    EXPECT_FALSE(gallery->isModal());
    action->trigger();
    EXPECT_EQ(gallery, m_window->open_gallery());
}

TEST_F(host_gallery, closing_it_ends_it)
{
    m_gallery->close();
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_gallery.isNull());
    m_gallery = m_window->open_gallery();
    m_gallery->reject();
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_gallery.isNull());
}

TEST_F(host_gallery, only_what_is_seen_is_made)
{
    EXPECT_EQ(1, m_gallery->findChildren<GALLERY_MODEL*>().size());
    EXPECT_EQ(1, m_gallery->findChildren<GALLERY_PAGE*>().size());
    select("icons");
    EXPECT_EQ(2, m_gallery->findChildren<GALLERY_PAGE*>().size());
    // No widget per row.
    EXPECT_LT(m_gallery->findChildren<QWidget*>().size(), 80);
}

// ---- What is there --------------------------------------------------------------------------------------------------

TEST_F(host_gallery, everything_with_a_name_is_there)
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        const GALLERY_KIND kind = to_kind(i);
        const QString title = GALLERY_CATALOG::get_title(kind);
        ASSERT_TRUE(m_gallery->select(GALLERY_CATALOG::get_key(kind)));
        EXPECT_EQ(kind, m_gallery->get_kind());
        const QStringList names = get_names();
        EXPECT_EQ(COUNTS[i], names.size()) << title.toStdString();
        EXPECT_EQ(COUNTS[i], QSet<QString>(names.begin(), names.end()).size()) << title.toStdString();
        EXPECT_EQ(QString::number(COUNTS[i]), get_count(kind)) << title.toStdString();
        EXPECT_EQ(QStringLiteral("%1 %2").arg(COUNTS[i]).arg(title.toLower()), get_status());
        EXPECT_EQ(names[0], get_name());
        EXPECT_TRUE(get_facts().contains(GALLERY_CATALOG::get_call(kind, names[0]))) << title.toStdString();
    }
}

TEST_F(host_gallery, names_belong_to_their_values)
{
    const GALLERY_MODEL actions(GALLERY_ACTIONS);
    const GALLERY_MODEL icons(GALLERY_ICONS);
    for (int row = 0; row < 770; ++row)
    {
        const QModelIndex index = actions.index(row, 0);
        EXPECT_EQ(row + 1, tolv_get_action_enum(index.data(GALLERY_MODEL::ROLE_NAME).toString()));
        EXPECT_EQ(row + 1, index.data(GALLERY_MODEL::ROLE_VALUE).toInt());
    }
    for (int row = 0; row < 784; ++row)
    {
        EXPECT_EQ(row + 1, tolv_get_icon_enum(icons.index(row, 0).data(GALLERY_MODEL::ROLE_NAME).toString()));
        EXPECT_EQ(row + 1, icons.index(row, 0).data(GALLERY_MODEL::ROLE_VALUE).toInt());
    }
    const GALLERY_MODEL brushes(GALLERY_BRUSHES);
    EXPECT_EQ(TOLV_RED_BRUSH,
              brushes.find_name(QStringLiteral("TOLV_RED_BRUSH")).data(GALLERY_MODEL::ROLE_VALUE).toInt());
}

TEST_F(host_gallery, the_models_keep_the_rules_of_models)
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        auto* const model = new GALLERY_MODEL(to_kind(i));
        const QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::Warning);
        GALLERY_FILTER filter(model);
        const QAbstractItemModelTester filter_tester(&filter, QAbstractItemModelTester::FailureReportingMode::Warning);
        filter.set_search(QStringLiteral("red"));
        model->refresh();
        EXPECT_FALSE(model->data(QModelIndex()).isValid());
        EXPECT_FALSE(model->headerData(99, Qt::Horizontal).isValid());
        EXPECT_FALSE(model->headerData(0, Qt::Vertical).isValid());
    }
}

TEST_F(host_gallery, an_action_shows_its_icon_text_shortcut_name_and_status_tip)
{
    select("TOLV_COPY_ACTION");
    const QModelIndex current = view()->currentIndex();
    const auto get_text = [&current](int column) { return current.sibling(current.row(), column).data().toString(); };
    EXPECT_EQ("Copy", get_text(0));
    EXPECT_EQ("Ctrl+C", get_text(1));
    EXPECT_EQ("TOLV_COPY_ACTION", get_text(2));
    EXPECT_EQ("Copies the selection to the Clipboard", get_text(3));
    EXPECT_EQ(tolv_get_icon(TOLV_COPY_ICON).cacheKey(), current.data(Qt::DecorationRole).value<QIcon>().cacheKey());
    const QStringList titles{"Command", "Shortcut", "Name", "Status tip"};
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(titles[column], view()->model()->headerData(column, Qt::Horizontal).toString());
}

TEST_F(host_gallery, the_description_has_all_facts)
{
    const std::pair<const char*, QStringList> facts[] = {
        {"TOLV_COPY_ACTION",
         {"tolv_create_action(TOLV_COPY_ACTION, parent)", "&Copy", "Copy - Ctrl+C", "TOLV_COPY_ICON", "77"}},
        {"TOLV_PUSHPIN_ICON",
         {"tolv_get_icon(TOLV_PUSHPIN_ICON)", ":/icons/svg/tolv_pushpin_up.svg", ":/icons/svg/tolv_pushpin_down.svg"}},
        {"TOLV_COPY_ICON", {"TOLV_COPY_ACTION"}},
        {"TOLV_FLAT_PROJECT_OPEN_ICON", {"32x32, 48x48"}},
        {"TOLV_ARROW_CURSOR",
         {"tolv_get_cursor(TOLV_ARROW_CURSOR)", "8, 6", "32 by 32 pixels", ":/cursors/tolv_arrow_cursor.png",
          ":/cursors/tolv_arrow_cursor_mask.png"}},
        {"TOLV_KORVEX_LOGO_PIXMAP",
         {"tolv_get_pixmap(TOLV_KORVEX_LOGO_PIXMAP)", ":/pixmaps/tolv_korvex_logo.svg", "22"}},
        {"TOLV_IP_RGENWHEEL_MOVIE",
         {"tolv_get_movie(TOLV_IP_RGENWHEEL_MOVIE)", ":/movies/tolv_ip_rgenwheel.gif", "12", "ms"}},
        {"TOLV_RED_COLOR", {"TOLV_COLOR(TOLV_RED_COLOR).get_color()", "#ff0000", "TOLV_RED_PEN", "TOLV_RED_BRUSH"}},
        {"TOLV_WINDOW_HIGHLIGHT_COLOR", {"Palette role", "Highlight"}},
        {"TOLV_RED_PEN", {"*TOLV_PEN(TOLV_RED_PEN).get_pen()", "TOLV_RED_COLOR", "solid", "square", "miter"}},
        {"TOLV_RED_BRUSH", {"*TOLV_BRUSH(TOLV_RED_BRUSH).get_brush()", "TOLV_RED_COLOR", "solid"}},
        {"TOLV_GUI_BOLD_FONT",
         {"*TOLV_FONT(TOLV_GUI_BOLD_FONT).get_font()", "Korvex Clear", "10", "bold", "TOLV_WINDOW_TEXT_COLOR",
          "TOLV_WINDOW_BACKGROUND_COLOR", "yes"}},
    };
    for (const auto& [name, texts] : facts)
    {
        select(name);
        EXPECT_EQ(QLatin1String(name), get_name());
        EXPECT_TRUE(get_facts().startsWith(QLatin1String(name))) << name;
        for (const QString& text : texts)
            EXPECT_TRUE(get_facts().contains(text)) << name << ": " << text.toStdString();
    }
}

TEST_F(host_gallery, every_description_is_complete)
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        for (const GALLERY_ENTRY& entry : GALLERY_CATALOG::make_entries(to_kind(i)))
        {
            const QVector<GALLERY_FACT> facts = GALLERY_CATALOG::describe(to_kind(i), entry.value);
            EXPECT_GE(facts.size(), 2) << entry.name.toStdString();
            EXPECT_EQ(QString::number(entry.value), facts.back().text);
            EXPECT_EQ(GALLERY_CATALOG::get_columns(to_kind(i)).size(), entry.texts.size());
            for (const GALLERY_FACT& fact : facts)
                EXPECT_FALSE(fact.title.isEmpty() || fact.text.isEmpty()) << entry.name.toStdString();
        }
    }
}

// ---- Choosing -------------------------------------------------------------------------------------------------------

TEST_F(host_gallery, what_does_not_exist_cannot_be_selected)
{
    select("TOLV_MOVE_CURSOR");
    for (const char* what : {"", "TOLV_MOVE", "tolv_move_cursor", "Icons", "colors"})
        EXPECT_FALSE(m_gallery->select(QString::fromLatin1(what))) << what;
    EXPECT_EQ("TOLV_MOVE_CURSOR", get_name());
}

TEST_F(host_gallery, selecting_ends_a_search_that_hides_the_thing)
{
    search(QStringLiteral("paste"));
    select("TOLV_PASTE_ICON");
    EXPECT_EQ("paste", find<QLineEdit>("search")->text());
    select("TOLV_CUT_ICON");
    EXPECT_EQ("TOLV_CUT_ICON", get_name());
    EXPECT_EQ("", find<QLineEdit>("search")->text());
}

TEST_F(host_gallery, a_click_on_a_kind_and_on_a_thing_shows_it)
{
    auto* const kinds = find<QTreeWidget>("kinds");
    GUI_DRIVER::click(kinds->viewport(), kinds->visualItemRect(kinds->topLevelItem(GALLERY_PENS)).center());
    EXPECT_EQ(GALLERY_PENS, m_gallery->get_kind());
    const QModelIndex third = view()->model()->index(2, 0);
    GUI_DRIVER::click(view()->viewport(), view()->visualRect(third).center());
    EXPECT_EQ("TOLV_BLUE_PEN", get_name());
    EXPECT_TRUE(get_facts().startsWith(QStringLiteral("TOLV_BLUE_PEN")));
}

// ---- Searching ------------------------------------------------------------------------------------------------------

TEST_F(host_gallery, a_search_goes_through_everything)
{
    search(QStringLiteral("zoom in"));
    EXPECT_EQ(QStringList{"TOLV_ZOOM_IN_ACTION"}, get_names().filter(QStringLiteral("TOLV_ZOOM_IN_")));
    EXPECT_TRUE(get_facts().startsWith(get_names().constFirst()));
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        int expected = 0;
        for (const GALLERY_ENTRY& entry : GALLERY_CATALOG::make_entries(to_kind(i)))
        {
            const QString text = entry.texts.join(QLatin1Char(' ')).toLower();
            expected += text.contains(QStringLiteral("zoom")) && text.contains(QStringLiteral("in")) ? 1 : 0;
        }
        EXPECT_EQ(QString::number(expected), get_count(to_kind(i))) << i;
    }
    EXPECT_EQ("1", get_count(GALLERY_CURSORS));
    EXPECT_EQ("0", get_count(GALLERY_MOVIES));
    EXPECT_EQ(QStringLiteral("%1 of 770 actions").arg(get_names().size()), get_status());
    select("cursors");
    EXPECT_EQ(QStringList{"TOLV_ZOOM_IN_CURSOR"}, get_names());
    EXPECT_EQ("1 of 9 cursors", get_status());
}

TEST_F(host_gallery, words_are_found_in_any_text_order_and_letter_case)
{
    search(QStringLiteral("clipboard  COPIES  selection"));
    EXPECT_TRUE(get_names().contains(QStringLiteral("TOLV_COPY_ACTION"))); // by its status tip
    search(QStringLiteral("ctrl+shift+e"));
    EXPECT_TRUE(get_names().contains(QStringLiteral("TOLV_SETTINGS_ACTION")));
    search(QStringLiteral("TOLV_COPY_ICON"));
    EXPECT_EQ(QStringList(), get_names());
    select("icons");
    EXPECT_EQ(QStringList{"TOLV_COPY_ICON"}, get_names());
}

TEST_F(host_gallery, a_search_without_result_says_so)
{
    search(QStringLiteral("xyzzy"));
    const auto* const none = GUI_DRIVER::find_widget<QLabel>(m_gallery->get_page(GALLERY_ACTIONS), "nothing_found");
    EXPECT_TRUE(none->isVisible());
    EXPECT_EQ("Nothing here fits the search.", none->text());
    EXPECT_FALSE(view()->isVisible());
    EXPECT_EQ("", get_facts());
    EXPECT_EQ("0 of 770 actions", get_status());
    EXPECT_FALSE(find<QPushButton>("copy_name_button")->isEnabled());
    EXPECT_FALSE(find<QPushButton>("copy_call_button")->isEnabled());
    // A page that is first opened then says so, too.
    select("fonts");
    EXPECT_FALSE(view()->isVisible());
    search(QString());
    EXPECT_TRUE(view()->isVisible());
    EXPECT_EQ("102 fonts", get_status());
    EXPECT_EQ("TOLV_GUI_FONT", get_name());
    EXPECT_TRUE(find<QPushButton>("copy_name_button")->isEnabled());
}

TEST_F(host_gallery, escape_ends_the_search_first_and_then_the_window)
{
    search(QStringLiteral("copy"));
    auto* const field = find<QLineEdit>("search");
    GUI_DRIVER::key_click(field, Qt::Key_Escape);
    EXPECT_EQ("", field->text());
    ASSERT_TRUE(m_gallery->isVisible());
    GUI_DRIVER::key_click(field, Qt::Key_Escape);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_gallery.isNull());
}

TEST_F(host_gallery, the_keyboard_leads_from_the_search_to_the_things_and_back)
{
    auto* const field = find<QLineEdit>("search");
    EXPECT_TRUE(field->hasFocus());
    GUI_DRIVER::key_click(field, Qt::Key_Down);
    EXPECT_TRUE(view()->hasFocus());
    GUI_DRIVER::key_click(view(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(field->hasFocus());
    GUI_DRIVER::key_click(field, Qt::Key_Return);
    EXPECT_TRUE(view()->hasFocus());
    GUI_DRIVER::key_click(view(), Qt::Key_Down);
    EXPECT_EQ("TOLV_ABOUT_QT_ACTION", get_name());
}

TEST_F(host_gallery, a_click_on_a_header_sorts_numbers_as_numbers)
{
    select("fonts");
    auto* const table = qobject_cast<QTreeView*>(view());
    ASSERT_NE(nullptr, table);
    table->header()->setSectionResizeMode(QHeaderView::Stretch);
    GUI_DRIVER::process_posted();
    const QPoint points(table->header()->sectionViewportPosition(2) + 10, table->header()->height() / 2);
    GUI_DRIVER::click(table->header()->viewport(), points);
    int previous = 0;
    QSet<int> sizes;
    for (int row = 0; row < table->model()->rowCount(); ++row)
    {
        const int size = table->model()->index(row, 2).data().toInt();
        EXPECT_GE(size, previous);
        previous = size;
        sizes.insert(size);
    }
    EXPECT_TRUE(sizes.contains(9) && sizes.contains(10)); // as texts they stood the other way round
}

// ---- Pictures -------------------------------------------------------------------------------------------------------

TEST_F(host_gallery, icons_have_the_size_that_is_chosen)
{
    select("TOLV_STOP_PROCESS_ICON"); // a red square
    auto* const sizes = find<QComboBox>("icon_size");
    EXPECT_EQ("32 pixels", sizes->currentText());
    ASSERT_EQ(4, sizes->count());
    const int expected[] = {16, 24, 32, 64};
    QSize tile;
    for (int i = 0; i < 4; ++i)
    {
        sizes->setCurrentIndex(i);
        GUI_DRIVER::process_posted();
        const int size = expected[i];
        EXPECT_EQ(QStringLiteral("%1 pixels").arg(size), sizes->currentText());
        EXPECT_EQ(QSize(size, size), view()->iconSize());
        const QImage picture = render_current();
        const QImage icon = tolv_get_icon(TOLV_STOP_PROCESS_ICON).pixmap(size, size).toImage();
        const QColor red = icon.pixelColor(size / 2, size / 2);
        EXPECT_EQ(find_color_rect(icon, red).size(), find_color_rect(picture, red).size()) << size;
        EXPECT_GT(picture.height(), tile.height());
        tile = picture.size();
    }
    // Actions follow, also those that are shown later.
    select("TOLV_COPY_ACTION");
    EXPECT_EQ(QSize(64, 64), view()->iconSize());
    EXPECT_GE(view()->visualRect(view()->currentIndex()).height(), 64);
    EXPECT_TRUE(sizes->isEnabled());
    select("pens");
    EXPECT_FALSE(sizes->isEnabled());
}

TEST_F(host_gallery, the_ground_can_be_light_and_dark)
{
    select("icons");
    auto* const dark = find<QCheckBox>("dark_ground");
    EXPECT_FALSE(dark->isChecked());
    for (const bool is_dark : {false, true, false})
    {
        dark->setChecked(is_dark);
        const QColor ground = workbench_get_palette(is_dark).color(QPalette::Base);
        const QImage picture = render_widget(view()->viewport());
        EXPECT_EQ(ground, picture.pixelColor(picture.width() - 1, picture.height() - 1));
        const QImage preview = render_widget(find<GALLERY_PREVIEW>("preview"));
        EXPECT_EQ(ground, preview.pixelColor(1, 1));
        EXPECT_EQ(is_dark, ground.lightness() < 128);
    }
    // A page that is made later has the same one.
    dark->setChecked(true);
    select("pixmaps");
    const QImage picture = render_widget(view()->viewport());
    EXPECT_LT(picture.pixelColor(picture.width() - 1, 1).lightness(), 128);
}

TEST_F(host_gallery, a_cursor_shows_its_hot_spot)
{
    const QColor red(0xe0, 0x10, 0x30);
    const std::pair<const char*, QPoint> cursors[] = {{"TOLV_ZOOM_IN_CURSOR", QPoint(11, 11)},
                                                      {"TOLV_FORBIDDEN_CURSOR", QPoint(15, 15)},
                                                      {"TOLV_MOVE_CURSOR", QPoint(8, 8)}};
    for (const auto& [name, hot_spot] : cursors)
    {
        select(name);
        const QImage picture = render_current();
        const QRect mark = find_color_rect(picture, red, 40);
        ASSERT_FALSE(mark.isEmpty()) << name;
        // The picture has four by four pixels for each of the cursor's.
        const QRect ground = find_color_rect(picture, QColor(0x9a, 0xa4, 0xae));
        const QPoint corner((picture.width() - 128) / 2, 6);
        EXPECT_EQ(QRect(corner, QSize(128, 128)), ground) << name;
        const QPoint distance = mark.center() - (corner + hot_spot * 4 + QPoint(2, 2));
        EXPECT_LE(distance.manhattanLength(), 3) << name;
    }
}

TEST_F(host_gallery, over_the_preview_of_a_cursor_the_pointer_takes_its_form)
{
    select("TOLV_FORBIDDEN_CURSOR");
    auto* const preview = find<GALLERY_PREVIEW>("preview");
    EXPECT_EQ(Qt::BitmapCursor, preview->cursor().shape());
    EXPECT_EQ(QPoint(15, 15), preview->cursor().hotSpot());
    select("TOLV_COPY_ICON");
    EXPECT_EQ(Qt::ArrowCursor, preview->cursor().shape());
}

TEST_F(host_gallery, colours_pens_and_brushes_are_painted_as_they_are)
{
    select("TOLV_DARK_ORANGE_COLOR");
    EXPECT_GT(count_pixels(render_current(), TOLV_COLOR(TOLV_DARK_ORANGE_COLOR).get_color()), 400);
    select("TOLV_DARK_GREEN_BRUSH");
    EXPECT_GT(count_pixels(render_current(), QColor(0, 128, 0)), 1000);
    select("TOLV_DARK_RED_PEN");
    const QImage line = render_current();
    const QRect rect = find_color_rect(line, QColor(128, 0, 0));
    EXPECT_EQ(1, rect.height());
    EXPECT_GT(rect.width(), 50);
    // What would not be seen on the ground has another one.
    select("TOLV_WHITE_PEN");
    const QImage white = render_current();
    EXPECT_GT(count_pixels(white, QColor(0x30, 0x32, 0x35)), 500);
    EXPECT_GT(find_color_rect(white, Qt::white).width(), 50);
}

TEST_F(host_gallery, a_font_is_painted_in_its_colours)
{
    select("TOLV_TXED_KEYWORD_FONT");
    const QImage sample = render_current();
    EXPECT_GT(count_pixels(sample, TOLV_COLOR(TOLV_TXED_BACKGROUND_COLOR).get_color()), 500);
    EXPECT_GT(count_pixels(sample, TOLV_COLOR(TOLV_TXED_KEYWORD_TEXT_COLOR).get_color(), 60), 30);
}

TEST_F(host_gallery, everything_is_painted_with_something_to_see)
{
    GALLERY_SAMPLES samples;
    const QPalette palette = workbench_get_palette(false);
    for (int i = GALLERY_ICONS; i < GALLERY_KIND_COUNT; ++i)
    {
        for (const GALLERY_ENTRY& entry : GALLERY_CATALOG::make_entries(to_kind(i)))
        {
            if (entry.value == TOLV_EMPTY_ICON && i == GALLERY_ICONS)
                continue;
            QImage picture(96, 64, QImage::Format_RGB32);
            // The watermark for dark windows is white.
            picture.fill(entry.name == "TOLV_MDI_WATERMARK_PIXMAP" ? Qt::black : Qt::white);
            const QColor ground = picture.pixelColor(0, 0);
            QPainter painter(&picture);
            samples.paint(&painter, picture.rect().adjusted(4, 4, -4, -4), to_kind(i), entry.value, palette);
            painter.end();
            EXPECT_LT(count_pixels(picture, ground), 96 * 64 - 5) << entry.name.toStdString();
            EXPECT_EQ(ground, picture.pixelColor(2, 2)) << entry.name.toStdString(); // nothing beside it
        }
    }
}

TEST_F(host_gallery, the_preview_shows_each_kind_at_large)
{
    const QColor base = workbench_get_palette(false).color(QPalette::Base);
    for (const char* name : {"TOLV_COPY_ACTION", "TOLV_EXIT_ACTION", "TOLV_FULLSCREEN_ACTION", "TOLV_COPY_ICON",
                             "TOLV_MOVE_CURSOR", "TOLV_SPLASH_SCREEN_PIXMAP", "TOLV_BUSY_SPINNER_MOVIE",
                             "TOLV_RED_COLOR", "TOLV_RED_PEN", "TOLV_RED_BRUSH", "TOLV_GUI_FONT"})
    {
        select(name);
        const QImage picture = render_widget(find<GALLERY_PREVIEW>("preview"));
        EXPECT_GT(picture.width() * picture.height() - count_pixels(picture, base), 100) << name;
    }
}

TEST_F(host_gallery, movies_play_while_they_are_seen)
{
    const auto* const samples = m_gallery->findChild<GALLERY_SAMPLES*>();
    EXPECT_FALSE(samples->is_playing());
    select("movies");
    EXPECT_TRUE(samples->is_playing());
    const QImage before = render_current();
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return render_current() != before; }));
    select("icons");
    EXPECT_FALSE(samples->is_playing());
    select("movies");
    m_gallery->hide();
    EXPECT_FALSE(samples->is_playing());
    m_gallery->show();
    EXPECT_TRUE(samples->is_playing());
}

TEST_F(host_gallery, changed_colours_are_shown)
{
    select("TOLV_MSW_ERROR_COLOR");
    const QColor after(0x12, 0xab, 0x34);
    ASSERT_FALSE(get_facts().contains(after.name()));
    TOLV_COLOR::set_default_color(TOLV_MSW_ERROR_COLOR, after);
    m_gallery->apply_drawing_resources();
    EXPECT_TRUE(get_facts().contains(after.name()));
    EXPECT_EQ(after.name(), view()->currentIndex().data().toString());
    EXPECT_GT(count_pixels(render_current(), after), 400);
    TOLV_COLOR::reset_colors({TOLV_MSW_ERROR_COLOR});
}

// ---- Copying --------------------------------------------------------------------------------------------------------

TEST_F(host_gallery, names_and_calls_go_to_the_clipboard)
{
    select("TOLV_PASTE_ICON");
    GUI_DRIVER::click(find<QPushButton>("copy_name_button"));
    EXPECT_EQ("TOLV_PASTE_ICON", get_clipboard());
    EXPECT_EQ("Copied: TOLV_PASTE_ICON", get_status());
    GUI_DRIVER::click(find<QPushButton>("copy_call_button"));
    EXPECT_EQ("tolv_get_icon(TOLV_PASTE_ICON)", get_clipboard());
    EXPECT_EQ("Copied: tolv_get_icon(TOLV_PASTE_ICON)", get_status());
}

TEST_F(host_gallery, keys_and_a_double_click_copy_the_name)
{
    select("TOLV_CUT_ACTION");
    GUI_DRIVER::key_click(view(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("TOLV_CUT_ACTION", get_clipboard());
    GUI_DRIVER::key_click(view(), Qt::Key_Down);
    GUI_DRIVER::key_click(view(), Qt::Key_Return);
    EXPECT_EQ(get_name(), get_clipboard());
    EXPECT_NE("TOLV_CUT_ACTION", get_clipboard());
    select("cursors");
    const QModelIndex move = view()->model()->index(4, 0);
    view()->scrollTo(move);
    GUI_DRIVER::double_click(view()->viewport(), view()->visualRect(move).center());
    EXPECT_EQ("TOLV_MOVE_CURSOR", get_clipboard());
}

TEST_F(host_gallery, the_menu_of_a_thing_copies)
{
    select("TOLV_RED_PEN");
    answer_next_menu(QStringLiteral("Copy Call"));
    GUI_DRIVER::click(view()->viewport(), view()->visualRect(view()->currentIndex()).center(), Qt::RightButton);
    EXPECT_TRUE(GUI_DRIVER::wait_for([] { return get_clipboard() == "*TOLV_PEN(TOLV_RED_PEN).get_pen()"; }));
}

TEST_F(host_gallery, nothing_is_copied_where_nothing_is_found)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    search(QStringLiteral("xyzzy"));
    GUI_DRIVER::key_click(m_gallery, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("before", get_clipboard());
}

// ---- What every window owes its user --------------------------------------------------------------------------------

TEST_F(host_gallery, the_tab_key_goes_from_the_search_to_the_close_button)
{
    select("icons");
    find<QLineEdit>("search")->setFocus();
    QStringList chain;
    for (int i = 0; i < 9; ++i)
    {
        chain.append(m_gallery->focusWidget()->objectName());
        GUI_DRIVER::key_click(m_gallery->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ((QStringList{"search", "icon_size", "dark_ground", "kinds", "things", "facts", "copy_name_button",
                           "copy_call_button", "close_button"}),
              chain);
    EXPECT_TRUE(find<QLineEdit>("search")->hasFocus());
}

TEST_F(host_gallery, every_widget_of_the_keyboard_has_a_name_for_screen_readers)
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
        select(qPrintable(GALLERY_CATALOG::get_key(to_kind(i))));
    for (const QWidget* widget : m_gallery->findChildren<QWidget*>())
    {
        if ((widget->focusPolicy() & Qt::TabFocus) == 0 || widget->objectName().startsWith(QLatin1String("qt_")) ||
            widget->parentWidget()->inherits("QComboBoxPrivateContainer"))
            continue;
        const QAccessibleInterface* const interface =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
}

TEST_F(host_gallery, f1_asks_for_its_help)
{
    MODULE_RECORDER recorder;
    GUI_DRIVER::key_click(view(), Qt::Key_F1);
    GUI_DRIVER::key_click(find<QLineEdit>("search"), Qt::Key_F1);
    EXPECT_EQ((std::vector<std::string>{"Gallery", "Gallery"}), recorder.take_topics());
}

TEST_F(host_gallery, a_size_for_once_is_neither_kept_nor_overruled)
{
    m_gallery->use_size(QSize(760, 500));
    m_gallery->close();
    GUI_DRIVER::process_posted();
    ASSERT_TRUE(m_gallery.isNull());
    m_gallery = m_window->open_gallery();
    EXPECT_NE(QSize(760, 500), m_gallery->size());
    m_gallery->resize(770, 510);
    m_gallery->close();
    GUI_DRIVER::process_posted();
    m_gallery = m_window->open_gallery();
    EXPECT_EQ(QSize(770, 510), m_gallery->size());
}
