#pragma once

#include "tolv_export.h"
#include "tolv_string_cmp.h"

#include "fio.h"

#include <QColor>
#include <QLinearGradient>
#include <QObject>
#include <QString>

#include <list>
#include <string>

enum TOLV_ACTION_ENUM : int;

/// Small helpers that all parts of the library and its hosts share: the checked connection of signals, escaping of
/// texts, lines of file dialogs, and colours. Plain functions without state, except for the generator behind
/// tolv_get_random_partition_color(). tolv_string_cmp() stands in tolv_string_cmp.h.

// ---- Connections ----------------------------------------------------------------------------------------------------

/// Connects a signal by its text, as SIGNAL() and SLOT() make it. A connection that cannot be made is a mistake in the
/// caller and ends in an internal error that says what does not fit: which classes, whether the arguments agree, which
/// of the two members exists, and where the connection stands. Usually called through TOLV_SAFE_CONNECT.
///
/// Qt::UniqueConnection for a connection that exists already gives an invalid connection and so counts as a failure.
/// @param file source file of the connection as `__FILE__` gives it; null leaves the place out of the report
/// @param line line in it
TOLV_EXPORT void tolv_safe_connect(const QObject* sender, const char* signal, const QObject* receiver,
                                   const char* method, Qt::ConnectionType type, const char* file, int line);

/// The checked connection of type Qt::AutoConnection, with the place where it stands.
#define TOLV_SAFE_CONNECT(sender, signal, receiver, method)                                                            \
    TOLV_SAFE_CONNECT_TYPE(sender, signal, receiver, method, Qt::AutoConnection)

/// The same with another type.
#define TOLV_SAFE_CONNECT_TYPE(sender, signal, receiver, method, type)                                                 \
    tolv_safe_connect(sender, signal, receiver, method, type, __FILE__, __LINE__)

// ---- Texts ----------------------------------------------------------------------------------------------------------

/// The text as a regular expression that matches it literally: a backslash before each of `. ^ $ | ( ) [ ] { } * + ? \`.
TOLV_EXPORT QString tolv_escape_regexp_chars(QString text);

/// Replaces `& < > " '` by their HTML entities, in place. A null pointer is the internal error
/// "string_to_encode != 0", here and in the two below.
TOLV_EXPORT void tolv_html_encode_text(QString* string_to_encode);

/// Makes a text fit for a URL's query, in place: tabs, line feeds, "%", "+" and "&" become percent codes, other white
/// space is simplified and each blank becomes "+". This is no general percent encoding: "#", "=", "?" and all else
/// pass unchanged.
TOLV_EXPORT void tolv_url_encode_text(QString* string_to_encode);

/// Makes a text fit for the body of a "mailto:" link, in place: full percent encoding of its UTF-8 form.
TOLV_EXPORT void tolv_email_encode_text(QString* string_to_encode);

/// The text in the local 8-bit encoding, up to its first NUL.
TOLV_EXPORT std::string tolv_qstring_to_stl_string(QString text);

/// A command's menu text for plain display: without the marks of the mnemonic and without "...", an "&&" that stands
/// alone between blanks shown as "&". "&Save As..." gives "Save As". A value that is no command's is the internal error
/// of tolv_get_menu_text().
TOLV_EXPORT QString tolv_get_menu_text_without_symbol(TOLV_ACTION_ENUM action);

// ---- File dialogs ---------------------------------------------------------------------------------------------------

/// A line of a file dialog's list of types: "Verilog (*.v *.sv)" for the description "Verilog". Each extension of the
/// types stands once (letter case aside), in the order of its first appearance. Types without any extension leave
/// "Verilog )", which is meant.
TOLV_EXPORT std::string tolv_create_filter(std::string description, const std::list<FIO_FILE_TYPE>& types);

/// The same for all types of a class that `editor` opens. An empty description stands for the name of the class.
TOLV_EXPORT std::string tolv_create_filter(FIO_FILE_TYPE_FLAG flag, std::string description, FIO_EDITOR_TYPE editor);

// ---- Colours --------------------------------------------------------------------------------------------------------

/// A bright colour for a new partition, another one at each call: any hue, saturation 75 to 199, value 255.
TOLV_EXPORT QColor tolv_get_random_partition_color();

/// Colour of a value in a heat map: 0 percent is blue, 50 green, 100 red. The range is not checked: below -50 and above
/// 100 there is no such hue, and the colour is invalid.
TOLV_EXPORT QColor tolv_get_heatmap_color(int percent);

/// The heat map's legend, from left to right over the object's bounding box.
TOLV_EXPORT QLinearGradient tolv_get_heatmap_gradient();
