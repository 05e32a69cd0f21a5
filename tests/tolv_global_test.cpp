#include "gui_test.h"
#include "internal_error_trap.h"
#include "tolv_global.h"

#include <QRegularExpression>

#include <set>

namespace
{
class PUMP : public QObject
{
    Q_OBJECT

public slots:
    void stop()
    {
        ++m_stop_count;
    }
    void set_level(int level)
    {
        m_level = level;
    }

signals:
    void started();
    void level_changed(int level, const QString& unit);

public:
    int m_stop_count = 0;
    int m_level = 0;
};

class TANK : public QObject
{
    Q_OBJECT

public slots:
    void fill(double)
    {
    }
};

class TOLV_GLOBAL_TEST : public TOLV_TEST
{
};

class TOLV_GLOBAL_PLAIN_TEST : public PLAIN_GUI_TEST
{
};

/// The text of the internal error in which a connection ends. Qt's own warning is expected beside it.
TRAPPED_INTERNAL_ERROR catch_connect_error(const QObject* sender, const char* signal, const QObject* receiver,
                                           const char* method, const char* file, int line)
{
    const SCOPED_EXPECTED_WARNING warning("QObject::connect");
    return CATCH_INTERNAL_ERROR(tolv_safe_connect(sender, signal, receiver, method, Qt::AutoConnection, file, line));
}

std::string get_connect_error(const QObject* sender, const char* signal, const QObject* receiver, const char* method)
{
    return catch_connect_error(sender, signal, receiver, method, nullptr, 0).text;
}

QString url_encode(QString text)
{
    tolv_url_encode_text(&text);
    return text;
}

QString html_encode(QString text)
{
    tolv_html_encode_text(&text);
    return text;
}

QString email_encode(QString text)
{
    tolv_email_encode_text(&text);
    return text;
}
} // namespace

// ---- Connections ----------------------------------------------------------------------------------------------------

TEST_F(TOLV_GLOBAL_TEST, a_good_connection_is_made)
{
    PUMP sender;
    PUMP receiver;
    TOLV_SAFE_CONNECT(&sender, SIGNAL(started()), &receiver, SLOT(stop()));
    emit sender.started();
    EXPECT_EQ(1, receiver.m_stop_count);
}

TEST_F(TOLV_GLOBAL_TEST, a_signal_can_have_more_arguments_than_the_slot)
{
    PUMP pump;
    TOLV_SAFE_CONNECT(&pump, SIGNAL(level_changed(int, const QString&)), &pump, SLOT(set_level(int)));
    emit pump.level_changed(7, QStringLiteral("l"));
    EXPECT_EQ(7, pump.m_level);
}

TEST_F(TOLV_GLOBAL_PLAIN_TEST, the_type_of_the_connection_is_the_callers)
{
    PUMP sender;
    PUMP receiver;
    TOLV_SAFE_CONNECT_TYPE(&sender, SIGNAL(started()), &receiver, SLOT(stop()), Qt::QueuedConnection);
    emit sender.started();
    EXPECT_EQ(0, receiver.m_stop_count);
    QCoreApplication::sendPostedEvents(&receiver);
    EXPECT_EQ(1, receiver.m_stop_count);
}

TEST_F(TOLV_GLOBAL_TEST, a_connection_to_an_unknown_signal_says_what_does_not_fit)
{
    PUMP pump;
    TANK tank;
    EXPECT_EQ("Error connecting SIGNAL PUMP::2emptied() to SLOT PUMP::1stop()"
              "\n\tQMetaObject::checkConnectArgs() returns true"
              "\n\tSIGNAL signature is invalid and maps to PUMP::"
              "\n\tSLOT signature is valid and maps to PUMP::stop()\n",
              get_connect_error(&pump, SIGNAL(emptied()), &pump, SLOT(stop())));
}

TEST_F(TOLV_GLOBAL_TEST, a_connection_to_an_unknown_slot_says_what_does_not_fit)
{
    PUMP pump;
    TANK tank;
    EXPECT_EQ("Error connecting SIGNAL PUMP::2started() to SLOT TANK::1empty()"
              "\n\tQMetaObject::checkConnectArgs() returns true"
              "\n\tSIGNAL signature is valid and maps to PUMP::started()"
              "\n\tSLOT signature is invalid and maps to TANK::\n",
              get_connect_error(&pump, SIGNAL(started()), &tank, SLOT(empty())));
}

TEST_F(TOLV_GLOBAL_TEST, a_connection_with_other_arguments_says_so_and_normalizes_what_it_looks_up)
{
    PUMP pump;
    TANK tank;
    EXPECT_EQ("Error connecting SIGNAL PUMP::2level_changed( int ,const QString & ) to SLOT TANK::1fill( double )"
              "\n\tQMetaObject::checkConnectArgs() returns false"
              "\n\tSIGNAL signature is valid and maps to PUMP::level_changed(int,QString)"
              "\n\tSLOT signature is valid and maps to TANK::fill(double)\n",
              get_connect_error(&pump, "2level_changed( int ,const QString & )", &tank, "1fill( double )"));
}

TEST_F(TOLV_GLOBAL_TEST, texts_that_are_no_members_are_reported_and_read_no_further_than_their_end)
{
    PUMP pump;
    for (const char* text : {"", "2", "started", "2started", "%1%2", "("})
    {
        const std::string error = get_connect_error(&pump, text, &pump, text);
        EXPECT_EQ(0U,
                  error.find("Error connecting SIGNAL PUMP::" + std::string(text) + " to SLOT PUMP::" + text + "\n"))
            << error;
        EXPECT_NE(std::string::npos, error.find("SIGNAL signature is invalid and maps to PUMP::\n")) << error;
        EXPECT_NE(std::string::npos, error.find("SLOT signature is invalid and maps to PUMP::\n")) << error;
    }
    EXPECT_EQ("Error connecting SIGNAL PUMP:: to SLOT PUMP::"
              "\n\tQMetaObject::checkConnectArgs() returns false"
              "\n\tSIGNAL signature is invalid and maps to PUMP::"
              "\n\tSLOT signature is invalid and maps to PUMP::\n",
              get_connect_error(&pump, nullptr, &pump, nullptr));
}

TEST_F(TOLV_GLOBAL_TEST, null_partners_are_named)
{
    PUMP pump;
    EXPECT_EQ("Error connecting SIGNALS: The sender and the receiver pointers are NULL!",
              get_connect_error(nullptr, SIGNAL(started()), nullptr, SLOT(stop())));
    EXPECT_EQ("Error connecting SIGNALS: The sender pointer is NULL!",
              get_connect_error(nullptr, SIGNAL(started()), &pump, SLOT(stop())));
    EXPECT_EQ("Error connecting SIGNALS: The receiver pointer is NULL!",
              get_connect_error(&pump, SIGNAL(started()), nullptr, SLOT(stop())));
}

TEST_F(TOLV_GLOBAL_TEST, a_failure_names_the_place_of_the_connection)
{
    PUMP pump;
    EXPECT_EQ("Error connecting SIGNALS: The sender pointer is NULL!\n\tConnect location: pump_house.cpp: 4711\n",
              catch_connect_error(nullptr, SIGNAL(started()), &pump, SLOT(stop()), "pump_house.cpp", 4711).text);
    // The line end of the long form goes before the place is added.
    EXPECT_EQ("Error connecting SIGNAL PUMP::2emptied() to SLOT PUMP::1stop()"
              "\n\tQMetaObject::checkConnectArgs() returns true"
              "\n\tSIGNAL signature is invalid and maps to PUMP::"
              "\n\tSLOT signature is valid and maps to PUMP::stop()"
              "\n\tConnect location: pump_house.cpp: -1\n",
              catch_connect_error(&pump, "2emptied()", &pump, "1stop()", "pump_house.cpp", -1).text);
}

TEST_F(TOLV_GLOBAL_TEST, the_macro_passes_its_own_place)
{
    PUMP pump;
    const SCOPED_EXPECTED_WARNING warning("QObject::connect");
    const int line = __LINE__ + 2;
    const TRAPPED_INTERNAL_ERROR error =
        CATCH_INTERNAL_ERROR(TOLV_SAFE_CONNECT(&pump, SIGNAL(emptied()), &pump, SLOT(stop())));
    EXPECT_NE(std::string::npos, error.text.find("\n\tConnect location: " + std::string(__FILE__) + ": "))
        << error.text;
    EXPECT_NE(std::string::npos, error.text.find(": " + std::to_string(line) + "\n")) << error.text;
}

TEST_F(TOLV_GLOBAL_TEST, a_failed_connection_is_reported_at_a_place_of_its_own)
{
    const TRAPPED_INTERNAL_ERROR error =
        catch_connect_error(nullptr, SIGNAL(started()), nullptr, SLOT(stop()), "a.cpp", 1);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_global", error.file);
    EXPECT_EQ(476, error.line);
}

TEST_F(TOLV_GLOBAL_TEST, a_unique_connection_that_exists_counts_as_a_failure)
{
    PUMP pump;
    TOLV_SAFE_CONNECT_TYPE(&pump, SIGNAL(started()), &pump, SLOT(stop()), Qt::UniqueConnection);
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(
        tolv_safe_connect(&pump, SIGNAL(started()), &pump, SLOT(stop()), Qt::UniqueConnection, nullptr, 0));
    EXPECT_EQ("Error connecting SIGNAL PUMP::2started() to SLOT PUMP::1stop()"
              "\n\tQMetaObject::checkConnectArgs() returns true"
              "\n\tSIGNAL signature is valid and maps to PUMP::started()"
              "\n\tSLOT signature is valid and maps to PUMP::stop()\n",
              error.text);
    emit pump.started();
    EXPECT_EQ(1, pump.m_stop_count);
}

// ---- Texts ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GLOBAL_TEST, each_character_with_a_meaning_in_expressions_gets_a_backslash)
{
    EXPECT_EQ(QStringLiteral(R"(\.\^\$\|\(\)\[\]\{\}\*\+\?\\)"),
              tolv_escape_regexp_chars(QStringLiteral(R"(.^$|()[]{}*+?\)")));
    EXPECT_EQ(QStringLiteral("-/,:=<>!# \n\u00e4"), tolv_escape_regexp_chars(QStringLiteral("-/,:=<>!# \n\u00e4")));
    EXPECT_EQ(QStringLiteral(R"(mem\[3\]\\1)"), tolv_escape_regexp_chars(QStringLiteral(R"(mem[3]\1)")));
    EXPECT_EQ(QString(), tolv_escape_regexp_chars(QString()));
}

TEST_F(TOLV_GLOBAL_TEST, an_escaped_text_matches_itself)
{
    QString text;
    for (ushort code = 1; code < 128; ++code)
        text += QChar(code);
    const QRegularExpression expression(QStringLiteral("\\A") + tolv_escape_regexp_chars(text) + QStringLiteral("\\z"));
    EXPECT_TRUE(expression.match(text).hasMatch());
    EXPECT_FALSE(expression.match(text + text).hasMatch());
}

TEST_F(TOLV_GLOBAL_TEST, html_entities_replace_the_five_characters)
{
    EXPECT_EQ(QStringLiteral("&lt;&amp;&gt;"), html_encode(QStringLiteral("<&>")));
    EXPECT_EQ(QStringLiteral("&amp;&lt;&gt;&quot;&apos;"), html_encode(QStringLiteral("&<>\"'")));
    EXPECT_EQ(QStringLiteral("&amp;lt;"), html_encode(QStringLiteral("&lt;")));
    EXPECT_EQ(QStringLiteral("a b\n/\u00e4"), html_encode(QStringLiteral("a b\n/\u00e4")));
    EXPECT_EQ(QString(), html_encode(QString()));
}

TEST_F(TOLV_GLOBAL_TEST, a_url_query_gets_plus_for_blanks_and_codes_for_what_would_end_it)
{
    EXPECT_EQ(QStringLiteral("a%2Bb+c%26d%25"), url_encode(QStringLiteral("a+b c&d%")));
    EXPECT_EQ(QStringLiteral("a%0Ab"), url_encode(QStringLiteral(" a\nb ")));
    EXPECT_EQ(QStringLiteral("%09a%0A"), url_encode(QStringLiteral("\ta\n")));
    EXPECT_EQ(QStringLiteral("a+b+c"), url_encode(QStringLiteral("\r a   b \v\r c \f")));
    EXPECT_EQ(QStringLiteral("%2526"), url_encode(QStringLiteral("%26")));
    EXPECT_EQ(QString(), url_encode(QStringLiteral("   ")));
}

TEST_F(TOLV_GLOBAL_TEST, other_characters_of_a_url_pass)
{
    EXPECT_EQ(QStringLiteral("#=?/:;@\"<>\u00e4"), url_encode(QStringLiteral("#=?/:;@\"<>\u00e4")));
}

TEST_F(TOLV_GLOBAL_TEST, the_body_of_a_mail_is_percent_encoded)
{
    EXPECT_EQ(QStringLiteral("a%20b%0A%26%2B%25%3F%23"), email_encode(QStringLiteral("a b\n&+%?#")));
    EXPECT_EQ(QStringLiteral("%C3%A4%E2%82%AC"), email_encode(QStringLiteral("\u00e4\u20ac")));
    EXPECT_EQ(QStringLiteral("AZaz09-._~"), email_encode(QStringLiteral("AZaz09-._~")));
    EXPECT_EQ(QString(), email_encode(QString()));
    EXPECT_EQ(QString(), email_encode(QLatin1String("")));
}

TEST_F(TOLV_GLOBAL_TEST, the_encoders_want_a_text)
{
    for (void (*encode)(QString*) : {tolv_html_encode_text, tolv_url_encode_text, tolv_email_encode_text})
    {
        const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(encode(nullptr));
        EXPECT_EQ("string_to_encode != 0", error.text);
        EXPECT_EQ("TOLV", error.tag);
        EXPECT_EQ("tolv_crash_reporter_dlg", error.file);
    }
}

TEST_F(TOLV_GLOBAL_TEST, a_standard_string_is_in_the_local_encoding_and_ends_at_a_nul)
{
    EXPECT_EQ("", tolv_qstring_to_stl_string(QString()));
    EXPECT_EQ("top|clk", tolv_qstring_to_stl_string(QStringLiteral("top|clk")));
    EXPECT_EQ(QStringLiteral("\u00e4\u20ac").toLocal8Bit().toStdString(),
              tolv_qstring_to_stl_string(QStringLiteral("\u00e4\u20ac")));
    EXPECT_EQ("a", tolv_qstring_to_stl_string(QStringLiteral("a") + QChar(0) + QStringLiteral("b")));
}

// ---- File dialogs ---------------------------------------------------------------------------------------------------

namespace
{
/// The filter's line put together from the tables of types.
std::string make_expected_filter(const std::string& description, const std::list<FIO_FILE_TYPE>& types)
{
    std::string patterns;
    std::set<std::string> seen;
    for (const FIO_FILE_TYPE type : types)
    {
        std::list<FIO_EXTENSION_TYPE> extensions;
        FIO_EXTENSION_TYPE_INFO::get_extension_type_list(type, &extensions);
        for (const FIO_EXTENSION_TYPE extension : extensions)
        {
            const std::string text = fio_get_extension_string(extension);
            if (!text.empty() && seen.insert(text).second)
                patterns += (patterns.empty() ? "*" : " *") + text;
        }
    }
    return description + " (" + patterns + ")";
}
} // namespace

TEST_F(TOLV_GLOBAL_TEST, a_filter_lists_the_patterns_of_its_types)
{
    const std::list<FIO_FILE_TYPE> types = {FIO_FILE_TYPE_VERILOG, FIO_FILE_TYPE_SYSTEMVERILOG};
    const std::string filter = tolv_create_filter("Verilog", types);
    EXPECT_EQ(make_expected_filter("Verilog", types), filter);
    EXPECT_EQ(0U, filter.find("Verilog (*.v ")) << filter;
    EXPECT_NE(std::string::npos, filter.find(" *.sv")) << filter;
    EXPECT_EQ(')', filter.back());
}

TEST_F(TOLV_GLOBAL_TEST, a_pattern_stands_where_it_first_appears_and_once)
{
    const std::string two = tolv_create_filter("HDL", {FIO_FILE_TYPE_VHDL, FIO_FILE_TYPE_VERILOG});
    EXPECT_EQ(make_expected_filter("HDL", {FIO_FILE_TYPE_VHDL, FIO_FILE_TYPE_VERILOG}), two);
    EXPECT_LT(two.find("*.vhd"), two.find("*.v "));
    EXPECT_EQ(two, tolv_create_filter(
                       "HDL", {FIO_FILE_TYPE_VHDL, FIO_FILE_TYPE_VERILOG, FIO_FILE_TYPE_VHDL, FIO_FILE_TYPE_VERILOG}));
    // Two types that share an extension.
    const std::string netlists =
        tolv_create_filter("Netlist", {FIO_FILE_TYPE_JSON_NETLIST, FIO_FILE_TYPE_PLACED_NETLIST});
    EXPECT_EQ(netlists.find("*.json"), netlists.rfind("*.json")) << netlists;
}

TEST_F(TOLV_GLOBAL_TEST, a_filter_without_any_extension_ends_as_it_is_meant_to)
{
    EXPECT_EQ("Verilog )", tolv_create_filter("Verilog", {}));
    EXPECT_EQ("Verilog )", tolv_create_filter("Verilog", {FIO_FILE_TYPE_UNKNOWN}));
    EXPECT_EQ(" )", tolv_create_filter("", {}));
}

TEST_F(TOLV_GLOBAL_TEST, a_filter_by_class_takes_the_types_of_the_class)
{
    std::list<FIO_FILE_TYPE> types;
    FIO_FILE_TYPE_INFO::get_file_type_list(FIO_FILE_TYPE_FLAG_CONSTRAINTS, FIO_EDITOR_TYPE_ANY, &types);
    ASSERT_FALSE(types.empty());
    EXPECT_EQ(make_expected_filter("Limits", types),
              tolv_create_filter(FIO_FILE_TYPE_FLAG_CONSTRAINTS, "Limits", FIO_EDITOR_TYPE_ANY));
    EXPECT_EQ(make_expected_filter(fio_get_file_type_trait_string(FIO_FILE_TYPE_FLAG_CONSTRAINTS), types),
              tolv_create_filter(FIO_FILE_TYPE_FLAG_CONSTRAINTS, "", FIO_EDITOR_TYPE_ANY));
}

TEST_F(TOLV_GLOBAL_TEST, a_filter_by_class_keeps_to_the_editor)
{
    std::list<FIO_FILE_TYPE> types;
    FIO_FILE_TYPE_INFO::get_file_type_list(FIO_FILE_TYPE_FLAG_DESIGN, FIO_EDITOR_TYPE_GRAPHIC, &types);
    const std::string filter = tolv_create_filter(FIO_FILE_TYPE_FLAG_DESIGN, "Drawings", FIO_EDITOR_TYPE_GRAPHIC);
    EXPECT_EQ(types.empty() ? "Drawings )" : make_expected_filter("Drawings", types), filter);
    EXPECT_NE(tolv_create_filter(FIO_FILE_TYPE_FLAG_DESIGN, "Drawings", FIO_EDITOR_TYPE_ANY), filter);
}

// ---- Colours --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GLOBAL_TEST, colours_of_new_partitions_are_bright_and_differ)
{
    std::set<QRgb> colors;
    int lowest_saturation = 255;
    int highest_saturation = 0;
    std::set<int> hues;
    for (int i = 0; i < 20000; ++i)
    {
        const QColor color = tolv_get_random_partition_color();
        ASSERT_TRUE(color.isValid());
        ASSERT_EQ(QColor::Hsv, color.spec());
        ASSERT_EQ(255, color.value());
        ASSERT_EQ(255, color.alpha());
        lowest_saturation = std::min(lowest_saturation, color.hsvSaturation());
        highest_saturation = std::max(highest_saturation, color.hsvSaturation());
        hues.insert(color.hsvHue());
        colors.insert(color.rgb());
    }
    EXPECT_EQ(75, lowest_saturation);
    EXPECT_EQ(199, highest_saturation);
    EXPECT_EQ(360U, hues.size());
    EXPECT_EQ(0, *hues.begin());
    EXPECT_EQ(359, *hues.rbegin());
    EXPECT_LT(10000U, colors.size());
}

TEST_F(TOLV_GLOBAL_TEST, a_heat_map_goes_from_blue_over_green_to_red)
{
    EXPECT_EQ(QColor(255, 0, 0), tolv_get_heatmap_color(100).toRgb());
    EXPECT_EQ(QColor(0, 255, 0), tolv_get_heatmap_color(50).toRgb());
    EXPECT_EQ(QColor(0, 0, 255), tolv_get_heatmap_color(0).toRgb());
    EXPECT_EQ(120, tolv_get_heatmap_color(50).hsvHue());
    EXPECT_EQ(60, tolv_get_heatmap_color(75).hsvHue());
    EXPECT_EQ(180, tolv_get_heatmap_color(25).hsvHue());
    for (int percent = 0; percent <= 100; ++percent)
    {
        const QColor color = tolv_get_heatmap_color(percent);
        QColor expected;
        expected.setHsvF(static_cast<qreal>(static_cast<float>(100 - percent) * 2.4F / 360.0F), 1.0, 1.0, 1.0);
        EXPECT_EQ(expected, color) << percent;
    }
}

TEST_F(TOLV_GLOBAL_TEST, a_heat_map_does_not_check_its_range)
{
    EXPECT_EQ(QColor(255, 0, 0), tolv_get_heatmap_color(-50).toRgb()); // once around
    const SCOPED_EXPECTED_WARNING warning("HSV parameters out of range");
    EXPECT_FALSE(tolv_get_heatmap_color(101).isValid());
    EXPECT_FALSE(tolv_get_heatmap_color(-51).isValid());
    EXPECT_FALSE(tolv_get_heatmap_color(std::numeric_limits<int>::min()).isValid());
}

TEST_F(TOLV_GLOBAL_TEST, the_legend_of_a_heat_map_has_five_stops)
{
    const QLinearGradient gradient = tolv_get_heatmap_gradient();
    EXPECT_EQ(QPointF(0, 0), gradient.start());
    EXPECT_EQ(QPointF(1, 0), gradient.finalStop());
    EXPECT_EQ(QGradient::ObjectBoundingMode, gradient.coordinateMode());
    const QGradientStops expected = {{0.0, tolv_get_heatmap_color(0)},
                                     {0.25, tolv_get_heatmap_color(25)},
                                     {0.5, tolv_get_heatmap_color(50)},
                                     {0.75, tolv_get_heatmap_color(75)},
                                     {1.0, tolv_get_heatmap_color(100)}};
    EXPECT_EQ(expected, gradient.stops());
}

#include "tolv_global_test.moc"
