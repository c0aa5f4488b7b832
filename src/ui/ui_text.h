// The wizard's boundary between the till's Windows-1252 text and Qt's Unicode, and the combo box
// seen as the list control that the core's fill operations take.
#pragma once

#include "foundation/list_control.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <string>
#include <string_view>

class QComboBox;
class QWidget;

QString qtText(const std::string& tillText);
std::string tillText(const QString& text);
QString qtEntry(std::string_view tillText);

// A fixed or loaded list of the till's texts as the entries of a combo box.
template <typename Entries> QStringList qtList(const Entries& entries) {
    QStringList list;
    for (const auto& entry : entries) {
        list << qtEntry(entry);
    }
    return list;
}

// The combo box's current text in the till's code page.
std::string comboText(const QComboBox* box);

// Selects the entry whose text is exactly `text`; when no entry has it the selection stays, so a
// value the list does not offer leaves the list's default in place.
// Choosing an entry in code runs the box's handler just as a user's choice would, even when the
// entry was already selected, so a load always leaves the dependent controls refreshed.
void chooseText(QComboBox* box, const QString& text);

// Selects entry `index` the same way; a stored number outside the list is shown as an extra
// entry holding that number (captioned `shownAs` when given), so saving the page unchanged keeps
// what was installed.
void chooseIndex(QComboBox* box, std::int32_t index, const QString& shownAs = {});

// The number behind the selected entry: its position, or the number an extra entry holds.
std::int32_t chosenIndex(const QComboBox* box);

// Sets the enabled flag and the background with it: the window colour when enabled, the button
// face when disabled, so a disabled text or combo box looks grey.
void EnableControl(bool enabled, QWidget* control);

class ComboList final : public ListControl {
public:
    explicit ComboList(QComboBox* box) : box_(box) {}
    void Clear() override;
    void AddItem(const std::string& text) override;

private:
    QComboBox* box_;
};
