#include "ui/ui_text.h"

#include "platform/cp1252.h"

#include <QApplication>
#include <QComboBox>
#include <QPalette>
#include <QWidget>

namespace {
// The handler that choosing an entry in code must run even when the index does not move.
void announce(QComboBox* box, int index, int before) {
    if (index == before) {
        emit box->currentIndexChanged(index);
    }
}
} // namespace

QString qtText(const std::string& tillText) {
    return QString::fromStdString(cp1252::toUtf8(tillText));
}

QString qtEntry(std::string_view tillText) {
    return qtText(std::string(tillText));
}

std::string tillText(const QString& text) {
    return cp1252::fromUtf8(text.toStdString());
}

std::string comboText(const QComboBox* box) {
    return tillText(box->currentText());
}

void chooseText(QComboBox* box, const QString& text) {
    const int before = box->currentIndex();
    const int index = box->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (index < 0) {
        return;
    }
    box->setCurrentIndex(index);
    announce(box, index, before);
}

void chooseIndex(QComboBox* box, std::int32_t index, const QString& shownAs) {
    const int before = box->currentIndex();
    int row = -1;
    for (int i = 0; i < box->count(); ++i) {
        if (box->itemData(i).toInt() == index && box->itemData(i).isValid()) {
            row = i;
        }
    }
    if (row < 0 && index >= 0 && index < box->count() && !box->itemData(index).isValid()) {
        row = index;
    }
    if (row < 0) {
        box->addItem(shownAs.isEmpty() ? QString("%1 (as installed)").arg(index) : shownAs, index);
        row = box->count() - 1;
    }
    box->setCurrentIndex(row);
    announce(box, row, before);
}

std::int32_t chosenIndex(const QComboBox* box) {
    const QVariant held = box->currentData();
    return held.isValid() ? held.toInt() : box->currentIndex();
}

void EnableControl(bool enabled, QWidget* control) {
    control->setEnabled(enabled);
    QPalette palette = control->palette();
    const QPalette& system = QApplication::palette();
    const QColor background =
        system.color(QPalette::Active, enabled ? QPalette::Base : QPalette::Button);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Base, background);
    }
    control->setPalette(palette);
}

void ComboList::Clear() {
    box_->clear();
}

void ComboList::AddItem(const std::string& text) {
    box_->addItem(qtText(text));
}
