#pragma once

#include <QString>

/// What the user reads of a command: the text in the list of steps, and a description, such as the
/// part of the application that it belongs to.
class kyUndoString
{
public:
    /// text  UTF-8; null for an empty text
    kyUndoString(const char* text, const QString& description)
        : text_(QString::fromUtf8(text)), description_(description)
    {}

    const QString& text() const { return text_; }
    const QString& description() const { return description_; }

private:
    QString text_;
    QString description_;
};
