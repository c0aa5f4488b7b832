#include "ui/qt/qt_controls.h"

#include "platform/cp1252.h"
#include "ui/qt/welcome_picture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <type_traits>

QString qtText(const std::string& tillText) {
    return QString::fromStdString(cp1252::toUtf8(tillText));
}

std::string tillText(const QString& text) {
    return cp1252::fromUtf8(text.toStdString());
}

namespace {

void raise(const std::function<void()>& event) {
    if (event) {
        event();
    }
}

// Enabled flag and back colour of any widget; the colour is the palette's base, which is what a
// text or combo box is filled with.
template <typename Base, typename Widget> class QtControl : public Base {
public:
    explicit QtControl(Widget* widget) : w(widget) {}
    bool Enabled() const override { return w->isEnabled(); }
    void SetEnabled(bool enabled) override { w->setEnabled(enabled); }
    wizard::SystemColour BackColor() const override { return colour_; }
    void SetBackColor(wizard::SystemColour colour) override {
        colour_ = colour;
        QPalette palette = w->palette();
        const QColor fill = QApplication::palette().color(
            QPalette::Active,
            colour == wizard::SystemColour::ButtonFace ? QPalette::Button : QPalette::Base);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            palette.setColor(group, QPalette::Base, fill);
        }
        w->setPalette(palette);
    }

protected:
    Widget* w;

private:
    wizard::SystemColour colour_ = wizard::SystemColour::WindowBackground;
};

// Qt selects the first entry added to an empty box; the wizard's lists select nothing until told.
class QtComboBox final : public QtControl<wizard::ComboBox, QComboBox> {
public:
    explicit QtComboBox(QComboBox* box) : QtControl(box) {
        QObject::connect(box, &QComboBox::activated, [this] { raise(Click); });
        if (box->isEditable()) {
            QObject::connect(box->lineEdit(), &QLineEdit::textEdited, [this] { raise(Change); });
        }
    }
    void Clear() override {
        const QSignalBlocker quiet(w);
        w->clear();
    }
    void AddItem(const std::string& text) override {
        const QSignalBlocker quiet(w);
        const int before = w->currentIndex();
        w->addItem(qtText(text), 0);
        w->setCurrentIndex(before);
        if (w->isEditable() && before < 0) {
            w->setEditText({});
        }
    }
    int ListCount() const override { return w->count(); }
    std::string List(int index) const override { return tillText(w->itemText(index)); }
    std::int32_t ItemData(int index) const override { return w->itemData(index).toInt(); }
    void SetItemData(int index, std::int32_t data) override { w->setItemData(index, data); }
    int ListIndex() const override { return w->currentIndex(); }
    void SetListIndex(int index) override {
        const QSignalBlocker quiet(w);
        w->setCurrentIndex(index);
    }
    std::string Text() const override { return tillText(w->currentText()); }
    void SetText(const std::string& text) override {
        const QSignalBlocker quiet(w);
        w->setCurrentIndex(w->findText(qtText(text), Qt::MatchExactly | Qt::MatchCaseSensitive));
        w->setEditText(qtText(text));
    }
};

class QtCheckBox final : public QtControl<wizard::CheckBox, QCheckBox> {
public:
    explicit QtCheckBox(QCheckBox* box) : QtControl(box) {
        QObject::connect(box, &QCheckBox::clicked, [this] { raise(Click); });
    }
    bool Value() const override { return w->isChecked(); }
    void SetValue(bool checked) override {
        const QSignalBlocker quiet(w);
        w->setChecked(checked);
    }
};

class QtTextBox final : public QtControl<wizard::TextBox, QLineEdit> {
public:
    explicit QtTextBox(QLineEdit* text) : QtControl(text) {
        QObject::connect(text, &QLineEdit::textEdited, [this] { raise(Change); });
    }
    std::string Text() const override { return tillText(w->text()); }
    void SetText(const std::string& text) override {
        const QSignalBlocker quiet(w);
        w->setText(qtText(text));
    }
};

class QtButton final : public QtControl<wizard::Button, QPushButton> {
public:
    explicit QtButton(QPushButton* button) : QtControl(button) {
        QObject::connect(button, &QPushButton::clicked, [this] { raise(Click); });
    }
};

class QtLabel final : public QtControl<wizard::Label, QLabel> {
public:
    using QtControl::QtControl;
    std::string Caption() const override { return tillText(w->text()); }
    void SetCaption(const std::string& caption) override { w->setText(qtText(caption)); }
};

class QtFrame final : public QtControl<wizard::Frame, QFrame> {
public:
    using QtControl::QtControl;
    // Shown or hidden within its window, whether or not the window itself is showing yet.
    bool Visible() const override { return !w->isHidden(); }
    void SetVisible(bool visible) override { w->setVisible(visible); }
};

class QtPicture final : public QtControl<wizard::Picture, QLabel> {
public:
    using QtControl::QtControl;
};

class QtProgressBar final : public QtControl<wizard::ProgressBar, QProgressBar> {
public:
    using QtControl::QtControl;
    int Min() const override { return w->minimum(); }
    int Max() const override { return w->maximum(); }
    int Value() const override { return w->value(); }
    void SetMin(int min) override { w->setMinimum(min); }
    void SetMax(int max) override { w->setMaximum(max); }
    void SetValue(int value) override { w->setValue(value); }
};

class QtTimer final : public wizard::Timer {
public:
    explicit QtTimer(const QString& name) : timer_(std::make_unique<QTimer>()) {
        timer_->setObjectName(name);
        QObject::connect(timer_.get(), &QTimer::timeout, [this] { raise(Tick); });
    }
    int Interval() const override { return timer_->interval(); }
    void SetInterval(int milliseconds) override { timer_->setInterval(milliseconds); }
    bool Enabled() const override { return timer_->isActive(); }
    void SetEnabled(bool enabled) override {
        if (enabled) {
            timer_->start();
        } else {
            timer_->stop();
        }
    }

private:
    std::unique_ptr<QTimer> timer_;
};

std::string keyOf(const wizard::ControlInfo& info) {
    return info.index >= 0 ? std::string(info.name) + "(" + std::to_string(info.index) + ")"
                           : std::string(info.name);
}

} // namespace

template <typename Controls> QtControlSet::QtControlSet(Controls& controls) {
    wizard::forEachControl(controls, [this](const wizard::ControlInfo& info, auto*& slot) {
        using Kind = std::remove_pointer_t<std::remove_reference_t<decltype(slot)>>;
        const QString caption = qtText(std::string(info.caption));
        if constexpr (std::is_same_v<Kind, wizard::ComboBox>) {
            auto* box = new QComboBox;
            box->setEditable(info.editable);
            if (info.editable) {
                box->setInsertPolicy(QComboBox::NoInsert);
            }
            add(info, box);
            adapters_.push_back(std::make_unique<QtComboBox>(box));
        } else if constexpr (std::is_same_v<Kind, wizard::CheckBox>) {
            auto* box = new QCheckBox(caption);
            add(info, box);
            adapters_.push_back(std::make_unique<QtCheckBox>(box));
        } else if constexpr (std::is_same_v<Kind, wizard::TextBox>) {
            auto* text = new QLineEdit;
            add(info, text);
            adapters_.push_back(std::make_unique<QtTextBox>(text));
        } else if constexpr (std::is_same_v<Kind, wizard::Button>) {
            auto* button = new QPushButton(caption);
            add(info, button);
            adapters_.push_back(std::make_unique<QtButton>(button));
        } else if constexpr (std::is_same_v<Kind, wizard::Label>) {
            auto* label = new QLabel(caption);
            add(info, label);
            adapters_.push_back(std::make_unique<QtLabel>(label));
        } else if constexpr (std::is_same_v<Kind, wizard::Frame>) {
            auto* frame = new QFrame;
            add(info, frame);
            adapters_.push_back(std::make_unique<QtFrame>(frame));
        } else if constexpr (std::is_same_v<Kind, wizard::Picture>) {
            auto* picture = new QLabel;
            picture->setPixmap(welcomePicture());
            add(info, picture);
            adapters_.push_back(std::make_unique<QtPicture>(picture));
        } else if constexpr (std::is_same_v<Kind, wizard::ProgressBar>) {
            auto* bar = new QProgressBar;
            bar->setRange(0, 100);
            bar->setValue(0);
            add(info, bar);
            adapters_.push_back(std::make_unique<QtProgressBar>(bar));
        } else {
            static_assert(std::is_same_v<Kind, wizard::Timer>);
            timer_ = std::make_unique<QtTimer>(
                QString::fromUtf8(info.name.data(), static_cast<qsizetype>(info.name.size())));
            slot = timer_.get();
            return;
        }
        if constexpr (!std::is_same_v<Kind, wizard::Timer>) {
            slot = static_cast<Kind*>(adapters_.back().get());
        }
    });
}

template QtControlSet::QtControlSet(wizard::WizardControls&);
template QtControlSet::QtControlSet(wizard::PrinterSerialControls&);
template QtControlSet::QtControlSet(wizard::TmsControls&);

QtControlSet::~QtControlSet() = default;

void QtControlSet::add(const wizard::ControlInfo& info, QWidget* widget) {
    widget->setObjectName(
        QString::fromUtf8(info.name.data(), static_cast<qsizetype>(info.name.size())));
    if (info.index >= 0) {
        widget->setProperty("index", info.index);
    }
    widgets_[keyOf(info)] = widget;
    captions_[keyOf(info)] = qtText(std::string(info.caption));
    const bool labelled =
        qobject_cast<QComboBox*>(widget) != nullptr || qobject_cast<QLineEdit*>(widget) != nullptr;
    if (labelled && !info.caption.empty()) {
        auto* label = new QLabel(qtText(std::string(info.caption)));
        label->setBuddy(widget);
        labels_[keyOf(info)] = label;
    }
}

QWidget* QtControlSet::widget(const std::string& name) const {
    const auto found = widgets_.find(name);
    return found != widgets_.end() ? found->second : nullptr;
}

QString QtControlSet::caption(const std::string& name) const {
    const auto found = captions_.find(name);
    return found != captions_.end() ? found->second : QString();
}

QWidget* QtControlSet::label(const std::string& name) const {
    const auto found = labels_.find(name);
    return found != labels_.end() ? found->second : nullptr;
}
