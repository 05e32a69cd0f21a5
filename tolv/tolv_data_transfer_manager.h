#pragma once

#include "tolv_export.h"

#include <QList>
#include <QMimeData>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

class TOLV_ASSIGNMENT_LIST;
class TOLV_INSTANCE_NAME_LIST;

/// The one place where the tools' objects become QMimeData and back, so that copy, paste and drag work across all tools
/// of the suite.
///
/// A copy or a drag is made in this order: create_mime_data(), one or more add_*_format() calls, which stack several
/// representations on the same object, then inserting_to_clipboard() or, for a drag, `QDrag::setMimeData()` with
/// get_mime_data(). From then on the clipboard or the drag owns the object.
///
/// The private payloads are the records back to back, without header, version or count, written by a QDataStream in its
/// default form (big-endian). Reading takes whatever payload there is: one that ends within a record or holds noise
/// gives what could be read of it, never more records than the payload has bytes.
///
/// Without an object under construction set_transfer_data() and all add_*() calls are the internal error
/// "m_mime_data != NULL"; a null argument of a get_*() call is "data != NULL". Everything belongs to the GUI thread.
class TOLV_EXPORT TOLV_DATA_TRANSFER_MANAGER
{
public:
    /// The manager of the process, made at the first call and kept to the end.
    static TOLV_DATA_TRANSFER_MANAGER* get_instance();

    TOLV_DATA_TRANSFER_MANAGER(const TOLV_DATA_TRANSFER_MANAGER&) = delete;
    TOLV_DATA_TRANSFER_MANAGER& operator=(const TOLV_DATA_TRANSFER_MANAGER&) = delete;

    // ---- The object under construction ----

    /// Begins a new object. An earlier one is let go, not freed: it has gone to the clipboard or to a drag.
    void create_mime_data();
    /// Forgets the object under construction and frees it, unless the clipboard owns it. Harmless without one. Not to be
    /// called between `QDrag::setMimeData()` and the end of the drag, which owns the object.
    void clear_mime_data();
    /// The object under construction, for a drag; null where there is none, or where its later owner has freed it.
    QMimeData* get_mime_data() const;
    /// The formats stacked so far.
    QStringList get_mime_types() const;

    // ---- Adding representations ----

    /// Sets the standard text, the payload of any format, or the standard image (a QImage or QPixmap).
    void set_transfer_data(const QString& text);
    void set_transfer_data(const QByteArray& data, const QString& format);
    void set_transfer_data(const QVariant& image);

    /// The standard text.
    void add_text_format(const QString& text);
    /// A list of texts, as its own format, and where it has elements also as the standard text, a line for each.
    void add_text_format(const QStringList& text_list);
    /// The standard image.
    void add_image_format(const QVariant& image);
    /// Identifiers, 32 bits each.
    void add_id_format(const QList<unsigned int>& id_list);
    /// Identifiers of regions, 32 bits each. They travel by drag only: there is no form for the clipboard.
    void add_region_id_format(const QList<unsigned int>& region_id_list);
    /// The streamed fields of assignments.
    void add_assignment_list_format(const TOLV_ASSIGNMENT_LIST& assignment_list);
    /// The streamed fields of instance names. A name is written as Latin-1 and read in the local 8-bit encoding, which
    /// is meant: names of a design are ASCII.
    void add_instance_name_format(const TOLV_INSTANCE_NAME_LIST& instance_name_list);

    // ---- The clipboard ----

    /// Adds the format, then hands the object under construction to the clipboard.
    void add_text_format_into_clipboard(const QString& text);
    void add_text_format_into_clipboard(const QStringList& text_list);
    void add_image_format_into_clipboard(const QVariant& image);
    void add_id_format_into_clipboard(const QList<unsigned int>& id_list);
    void add_assignment_list_format_into_clipboard(const TOLV_ASSIGNMENT_LIST& assignment_list);
    void add_instance_name_format_into_clipboard(const TOLV_INSTANCE_NAME_LIST& instance_name_list);

    /// Puts an object on the clipboard, which owns it from now on. Null is the internal error "mime_data != NULL", and
    /// without a clipboard it is "clipboard != NULL".
    void inserting_to_clipboard(QMimeData* mime_data);

    /// What is on the clipboard; owned by it, and gone with its next change. Null for nothing. Without a clipboard the
    /// internal error "clipboard != NULL".
    const QMimeData* get_mime_data_from_clipboard() const;

    // ---- Reading ----

    /// The standard text as a QString, the standard image as the data has it. Invalid where there is none, as is the
    /// result of each call below.
    QVariant get_string_transfer_data(const QMimeData* data) const;
    QVariant get_image_transfer_data(const QMimeData* data) const;
    /// A QStringList; of data that has no list but a text, that text as a QString. Callers look at the type.
    QVariant get_string_list_transfer_data(const QMimeData* data) const;
    /// A QList<QVariant> of unsigned int.
    QVariant get_id_list_transfer_data(const QMimeData* data) const;
    QVariant get_region_id_list_transfer_data(const QMimeData* data) const;
    /// A TOLV_INSTANCE_NAME_LIST or a TOLV_ASSIGNMENT_LIST. Fields that do not travel are as in a new record; those that a
    /// payload which ends within a record has no more are null, zero and false.
    QVariant get_instance_name_list_transfer_data(const QMimeData* data) const;
    QVariant get_assignment_list_transfer_data(const QMimeData* data) const;
    /// All that the data holds, in the order text, text list, identifiers, regions, image, instance names, assignments.
    /// Data with a text and no text list has the text twice, as the text list is asked for like everywhere else.
    QList<QVariant> get_all_transfer_data(const QMimeData* data) const;

    /// The same of what is on the clipboard. Regions have no such form, see add_region_id_format().
    QVariant get_string_transfer_data_from_clipboard() const;
    QVariant get_image_transfer_data_from_clipboard() const;
    QVariant get_string_list_transfer_data_from_clipboard() const;
    QVariant get_id_list_transfer_data_from_clipboard() const;
    QVariant get_instance_name_list_transfer_data_from_clipboard() const;
    QVariant get_assignment_list_transfer_data_from_clipboard() const;
    QList<QVariant> get_all_transfer_data_from_clipboard() const;

private:
    TOLV_DATA_TRANSFER_MANAGER();
    ~TOLV_DATA_TRANSFER_MANAGER();

    bool has_mime_data() const;
    void add_number_format(const QList<unsigned int>& numbers, const QString& format);
    QVariant get_from_clipboard(QVariant (TOLV_DATA_TRANSFER_MANAGER::*reader)(const QMimeData*) const) const;

    static TOLV_DATA_TRANSFER_MANAGER* m_instance;

    QPointer<QMimeData> m_mime_data; // becomes null when its later owner frees it
};
