#pragma once

#include <QByteArray>
#include <QColor>
#include <QDebug>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <ostream>

/// How a failed comparison shows values of Qt: as qDebug() would.
#define TEST_PRINT_AS_QT_DOES(TYPE)                                                                                    \
    inline void PrintTo(const TYPE& value, std::ostream* stream)                                                       \
    {                                                                                                                  \
        QString text;                                                                                                  \
        QDebug(&text).nospace() << value;                                                                              \
        *stream << text.toStdString();                                                                                 \
    }                                                                                                                  \
    static_assert(true, "")

QT_BEGIN_NAMESPACE
TEST_PRINT_AS_QT_DOES(QString);
TEST_PRINT_AS_QT_DOES(QByteArray);
TEST_PRINT_AS_QT_DOES(QStringList);
TEST_PRINT_AS_QT_DOES(QPoint);
TEST_PRINT_AS_QT_DOES(QPointF);
TEST_PRINT_AS_QT_DOES(QSize);
TEST_PRINT_AS_QT_DOES(QSizeF);
TEST_PRINT_AS_QT_DOES(QRect);
TEST_PRINT_AS_QT_DOES(QRectF);
TEST_PRINT_AS_QT_DOES(QColor);
TEST_PRINT_AS_QT_DOES(QVariant);
QT_END_NAMESPACE

#undef TEST_PRINT_AS_QT_DOES
