// A field of a form that knows what it was filled with, so that what the operator entered can be told from what was shown.
#pragma once

#include <QVariant>
#include <functional>

namespace orvane {

struct FormField {
    std::function<QVariant()> read;
    std::function<void(const QVariant&)> write;
    QVariant filled;

    bool IsChanged() const { return read() != filled; }
    /// Shows a value as the form's own.
    void Fill(const QVariant& value) {
        write(value);
        filled = read();  // as the field shows it, which may be rounded
    }
};

}  // namespace orvane
