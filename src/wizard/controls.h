// The controls the wizard's forms talk to, with the properties the forms have always used: a combo
// box has its items, list index, text and back colour; a check box its value; a text box its text.
// No toolkit here. A face (Qt, Win32) gives one adapter per native control; the tests give fakes.
//
// Events: a face raises an event (Click, Change, Tick) only for what the user did, or for its own
// timer. Setting a property in code never raises one in the face: where the form's code has always
// run a handler after a change made in code (selecting an entry runs the list's click handler),
// the wizard layer runs it itself, so that this rule lives once and the fakes show it.
//
// All text is the till's Windows-1252; a face converts at its edge.
#pragma once

#include "foundation/list_control.h"

#include <cstdint>
#include <functional>
#include <string>

namespace wizard {

// The two system colours EnableControl switches between.
enum class SystemColour { WindowBackground, ButtonFace };

class Control {
public:
    virtual ~Control() = default;
    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual SystemColour BackColor() const = 0;
    virtual void SetBackColor(SystemColour colour) = 0;
};

// A drop-down list, or (Editable) a list with a text field. AddItem and Clear come from the list
// control seam, so the core's fill operations fill it directly.
class ComboBox : public Control, public ListControl {
public:
    virtual int ListCount() const = 0;
    virtual std::string List(int index) const = 0;
    // Extra number kept with an entry (0 unless set).
    virtual std::int32_t ItemData(int index) const = 0;
    virtual void SetItemData(int index, std::int32_t data) = 0;
    // -1: no entry selected.
    virtual int ListIndex() const = 0;
    virtual void SetListIndex(int index) = 0;
    // The selected entry's text; for an editable box, what its text field shows.
    virtual std::string Text() const = 0;
    // Editable boxes only: sets the text field (selecting the entry of that text, if any).
    virtual void SetText(const std::string& text) = 0;

    std::function<void()> Click;  // the user chose an entry
    std::function<void()> Change; // the user edited the text field of an editable box
};

class CheckBox : public Control {
public:
    virtual bool Value() const = 0;
    virtual void SetValue(bool checked) = 0;

    std::function<void()> Click; // the user ticked or unticked it
};

class TextBox : public Control {
public:
    virtual std::string Text() const = 0;
    virtual void SetText(const std::string& text) = 0;

    std::function<void()> Change; // the user edited the text
};

class Button : public Control {
public:
    std::function<void()> Click;
};

class Label : public Control {
public:
    virtual std::string Caption() const = 0;
    virtual void SetCaption(const std::string& caption) = 0;
};

// A page of the wizard, or a group box of a dialog.
class Frame : public Control {
public:
    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;
};

// A picture drawn by the face (the welcome artwork); nothing to set.
class Picture : public Control {};

class ProgressBar : public Control {
public:
    virtual int Min() const = 0;
    virtual int Max() const = 0;
    virtual int Value() const = 0;
    virtual void SetMin(int min) = 0;
    virtual void SetMax(int max) = 0;
    virtual void SetValue(int value) = 0;
};

class Timer {
public:
    virtual ~Timer() = default;
    virtual int Interval() const = 0; // milliseconds
    virtual void SetInterval(int milliseconds) = 0;
    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;

    std::function<void()> Tick; // raised every Interval while enabled
};

} // namespace wizard
