#pragma once

#include "app/window/accessible/ItemAccessible.h"

#include <QQuickWindow>

namespace orvalen {

/// A text area inside a scrolling view. Its name is the property `spokenEditorName`. Qt's own interface
/// reports the area of the whole text, most of which is scrolled out of sight.
class EditorAccessible : public ItemAccessible,
                         public QAccessibleTextInterface,
                         public QAccessibleEditableTextInterface {
public:
    using ItemAccessible::ItemAccessible;

    QAccessible::Role role() const override { return QAccessible::EditableText; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name    ? item().property("spokenEditorName").toString()
               : kind == QAccessible::Value ? text(0, characterCount())
                                            : QString();
    }
    void setText(QAccessible::Text kind, const QString& text) override {
        if (kind == QAccessible::Value)
            replaceText(0, characterCount(), text);
    }
    QRect rect() const override { return onScreen(seenInWindow()); }
    QAccessible::State state() const override {
        QAccessible::State state = ItemAccessible::state();
        state.editable = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
               : type == QAccessible::EditableTextInterface
                   ? static_cast<void*>(static_cast<QAccessibleEditableTextInterface*>(this))
                   : nullptr;
    }

    int characterCount() const override { return number("length"); }
    QString text(int begin, int end) const override {
        QString text;
        QMetaObject::invokeMethod(object(), "getText", Q_RETURN_ARG(QString, text), Q_ARG(int, begin),
                                  Q_ARG(int, end));
        return text.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
    }
    int cursorPosition() const override { return number("cursorPosition"); }
    void setCursorPosition(int position) override { item().setProperty("cursorPosition", position); }
    QRect characterRect(int offset) const override {
        QRectF place;
        QMetaObject::invokeMethod(object(), "positionToRectangle", Q_RETURN_ARG(QRectF, place),
                                  Q_ARG(int, offset));
        return onScreen(item().mapRectToScene(place));
    }
    int offsetAtPoint(const QPoint& point) const override {
        if (item().window() == nullptr)
            return -1;
        const QPointF inside = item().mapFromScene(item().window()->mapFromGlobal(point));
        int offset = -1;
        QMetaObject::invokeMethod(object(), "positionAt", Q_RETURN_ARG(int, offset), Q_ARG(qreal, inside.x()),
                                  Q_ARG(qreal, inside.y()));
        return offset;
    }
    /// The text has no formatting, so one range covers all of it.
    QString attributes(int, int* begin, int* end) const override {
        *begin = 0;
        *end = characterCount();
        return {};
    }
    int selectionCount() const override { return number("selectionStart") == number("selectionEnd") ? 0 : 1; }
    void selection(int which, int* begin, int* end) const override {
        const bool selected = which == 0 && selectionCount() == 1;
        *begin = selected ? number("selectionStart") : 0;
        *end = selected ? number("selectionEnd") : 0;
    }
    void addSelection(int begin, int end) override { setSelection(0, begin, end); }
    void removeSelection(int) override { call("deselect"); }
    void setSelection(int which, int begin, int end) override {
        if (which == 0)
            call("select", Q_ARG(int, begin), Q_ARG(int, end));
    }
    void scrollToSubstring(int begin, int) override {
        setCursorPosition(begin);
    } // the view follows the cursor

    void deleteText(int begin, int end) override { call("remove", Q_ARG(int, begin), Q_ARG(int, end)); }
    void insertText(int offset, const QString& text) override {
        call("insert", Q_ARG(int, offset), Q_ARG(QString, text));
    }
    void replaceText(int begin, int end, const QString& text) override {
        deleteText(begin, end);
        insertText(begin, text);
    }

private:
    int number(const char* property) const { return item().property(property).toInt(); }
    void call(const char* method, QGenericArgument first = {}, QGenericArgument second = {}) const {
        QMetaObject::invokeMethod(object(), method, first, second);
    }
};

} // namespace orvalen
