// What the end-to-end run of each face shares: the user's choices read from choices.txt, and
// what the run left on the till, written the same way on both builds so the two can be compared
// line by line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

struct Choice {
    std::string action;  // choose, tick, type, press
    std::string control; // the control's name
    std::string value;   // UTF-8; "\u00e9" stands for the character it names
};

// The choices of the file; throws when it cannot be read or a line is not a choice.
std::vector<Choice> readChoices(const std::string& file);

// Every value of the card add-in's key and every key of the payment client's two INI files in
// `clientFolder` (a Windows path ending in "\"), one "where: name=value" line each, sorted.
void writeTillState(const std::string& clientFolder, std::ostream& out);
