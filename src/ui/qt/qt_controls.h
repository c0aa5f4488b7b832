// The Qt face's side of the wizard's controls: one adapter per widget, the widgets made from the
// wizard's control table (object names are the system's control names), and the till's
// Windows-1252 text converted at this edge.
#pragma once

#include "wizard/control_set.h"

#include <QString>
#include <QWidget>
#include <map>
#include <memory>
#include <string>
#include <vector>

QString qtText(const std::string& tillText);
std::string tillText(const QString& text);

// The widgets and adapters of one form, made from its control table and owned together. A
// combo or text box with a caption gets a label beside it (its buddy, for the Alt key).
class QtControlSet {
public:
    template <typename Controls> explicit QtControlSet(Controls& controls);
    ~QtControlSet();
    QtControlSet(const QtControlSet&) = delete;
    QtControlSet& operator=(const QtControlSet&) = delete;

    // The widget of a control by its name ("fraInstall(2)" for an element of a control array),
    // and the label made for it (nullptr when it has none).
    QWidget* widget(const std::string& name) const;
    QWidget* label(const std::string& name) const;
    // The control's caption in the table (a frame's heading, a box's label text).
    QString caption(const std::string& name) const;

private:
    void add(const wizard::ControlInfo& info, QWidget* widget);

    std::vector<std::unique_ptr<wizard::Control>> adapters_;
    std::unique_ptr<wizard::Timer> timer_;
    std::map<std::string, QWidget*> widgets_;
    std::map<std::string, QWidget*> labels_;
    std::map<std::string, QString> captions_;
};

extern template QtControlSet::QtControlSet(wizard::WizardControls&);
extern template QtControlSet::QtControlSet(wizard::PrinterSerialControls&);
extern template QtControlSet::QtControlSet(wizard::TmsControls&);
