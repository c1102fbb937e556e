#include "app/window/accessible/EditorAccessible.h"

#include <QQuickWindow>

namespace orvalen {

QString EditorAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name    ? item().property("spokenEditorName").toString()
           : kind == QAccessible::Value ? text(0, characterCount())
                                        : QString();
}

void EditorAccessible::setText(QAccessible::Text kind, const QString& text) {
    if (kind == QAccessible::Value)
        replaceText(0, characterCount(), text);
}

QAccessible::State EditorAccessible::state() const {
    QAccessible::State state = ItemAccessible::state();
    state.editable = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

void* EditorAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return nullptr;
}

int EditorAccessible::characterCount() const {
    return number("length");
}

QString EditorAccessible::text(int begin, int end) const {
    QString text;
    QMetaObject::invokeMethod(object(), "getText", Q_RETURN_ARG(QString, text), Q_ARG(int, begin),
                              Q_ARG(int, end));
    return text.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
}

int EditorAccessible::cursorPosition() const {
    return number("cursorPosition");
}

void EditorAccessible::setCursorPosition(int position) {
    item().setProperty("cursorPosition", position);
}

QRect EditorAccessible::characterRect(int offset) const {
    QRectF place;
    QMetaObject::invokeMethod(object(), "positionToRectangle", Q_RETURN_ARG(QRectF, place),
                              Q_ARG(int, offset));
    return onScreen(item().mapRectToScene(place));
}

int EditorAccessible::offsetAtPoint(const QPoint& point) const {
    if (item().window() == nullptr)
        return -1;
    const QPointF inside = item().mapFromScene(item().window()->mapFromGlobal(point));
    int offset = -1;
    QMetaObject::invokeMethod(object(), "positionAt", Q_RETURN_ARG(int, offset), Q_ARG(qreal, inside.x()),
                              Q_ARG(qreal, inside.y()));
    return offset;
}

/// Plain text: all of it alike.
QString EditorAccessible::attributes(int, int* begin, int* end) const {
    *begin = 0;
    *end = characterCount();
    return {};
}

int EditorAccessible::selectionCount() const {
    return number("selectionStart") == number("selectionEnd") ? 0 : 1;
}

void EditorAccessible::selection(int which, int* begin, int* end) const {
    const bool selected = which == 0 && selectionCount() == 1;
    *begin = selected ? number("selectionStart") : 0;
    *end = selected ? number("selectionEnd") : 0;
}

void EditorAccessible::addSelection(int begin, int end) {
    setSelection(0, begin, end);
}

void EditorAccessible::removeSelection(int) {
    QMetaObject::invokeMethod(object(), "deselect");
}

void EditorAccessible::setSelection(int which, int begin, int end) {
    if (which == 0)
        QMetaObject::invokeMethod(object(), "select", Q_ARG(int, begin), Q_ARG(int, end));
}

void EditorAccessible::scrollToSubstring(int begin, int) {
    setCursorPosition(begin); // the view follows the cursor
}

void EditorAccessible::deleteText(int begin, int end) {
    QMetaObject::invokeMethod(object(), "remove", Q_ARG(int, begin), Q_ARG(int, end));
}

void EditorAccessible::insertText(int offset, const QString& text) {
    QMetaObject::invokeMethod(object(), "insert", Q_ARG(int, offset), Q_ARG(QString, text));
}

void EditorAccessible::replaceText(int begin, int end, const QString& text) {
    deleteText(begin, end);
    insertText(begin, text);
}

} // namespace orvalen
