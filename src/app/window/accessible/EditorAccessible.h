#pragma once

#include "app/window/accessible/ItemAccessible.h"

namespace orvalen {

/// A text area in something that scrolls, named by its property `spokenEditorName`. The toolkit's own would
/// give as its place the whole text's, most of which lies behind other controls.
class EditorAccessible : public ItemAccessible,
                         public QAccessibleTextInterface,
                         public QAccessibleEditableTextInterface {
public:
    using ItemAccessible::ItemAccessible;

    QAccessible::Role role() const override { return QAccessible::EditableText; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    QRect rect() const override { return onScreen(seenInWindow()); }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    int characterCount() const override;
    QString text(int begin, int end) const override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    QString attributes(int offset, int* begin, int* end) const override;
    int selectionCount() const override;
    void selection(int which, int* begin, int* end) const override;
    void addSelection(int begin, int end) override;
    void removeSelection(int which) override;
    void setSelection(int which, int begin, int end) override;
    void scrollToSubstring(int begin, int end) override;

    void deleteText(int begin, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int begin, int end, const QString& text) override;

private:
    int number(const char* property) const { return item().property(property).toInt(); }
};

} // namespace orvalen
