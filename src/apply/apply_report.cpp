#include "apply/apply_report.h"

#include "platform/cp1252.h"

#include <nlohmann/json.hpp>
#include <sstream>

using nlohmann::ordered_json;

namespace {

constexpr std::string_view kMask = "***";

std::string utf8(const std::string& text) {
    return cp1252::toUtf8(text);
}

// A name of this machine's file system: UTF-8 as a rule, but a name made elsewhere may hold
// Windows-1252 bytes, which are read as such rather than fail the report.
std::string hostText(const std::string& name) {
    return cp1252::isUtf8(name) ? name : cp1252::toUtf8(name);
}

// The document as text; any byte that still is not UTF-8 becomes U+FFFD instead of an error, so
// a report after a run that changed the till is always printed.
std::string dumped(const ordered_json& doc) {
    return doc.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

ordered_json optionalText(const std::optional<std::string>& text) {
    return text ? ordered_json(utf8(*text)) : ordered_json(nullptr);
}

std::string shownOptional(std::string_view name, const std::optional<std::string>& value) {
    return value ? "\"" + shownValue(name, *value) + "\"" : "(none)";
}

std::string resultName(const ApplyReport& report) {
    switch (report.exit) {
    case ApplyExit::Success:
        return "success";
    case ApplyExit::RunFailed:
        return "failed";
    case ApplyExit::BadAnswers:
        return "refused";
    case ApplyExit::TillUnreadable:
        return "unreadable";
    }
    return "unknown";
}

std::string changeMark(bool changed) {
    return changed ? "changed" : "unchanged";
}

void textRegistry(std::ostringstream& out, const RunOutcome& outcome) {
    out << "Registry values " << (outcome.plan ? "that would change" : "written") << ":\n";
    std::size_t unchanged = 0;
    for (const RegistryWrite& write : outcome.changes.registry) {
        if (outcome.plan && !write.changed()) {
            ++unchanged;
            continue;
        }
        out << "  HKLM\\" << utf8(write.keyPath) << (write.keyPath.ends_with('\\') ? "" : "\\")
            << utf8(write.valueName) << ": " << utf8(shownOptional(write.valueName, write.before))
            << " -> " << utf8(shownOptional(write.valueName, write.after)) << "  "
            << changeMark(write.changed()) << "\n";
    }
    if (outcome.plan && unchanged > 0) {
        out << "  (" << unchanged << " more would be written with the value they already hold)\n";
    }
}

void textIni(std::ostringstream& out, const RunOutcome& outcome) {
    out << "INI keys " << (outcome.plan ? "that would be written" : "written") << ":\n";
    for (const IniWrite& write : outcome.changes.ini) {
        out << "  " << utf8(write.file) << " [" << utf8(write.section) << "] " << utf8(write.key)
            << ": " << utf8(shownOptional("", write.before)) << " -> "
            << utf8(shownOptional("", write.after)) << "  " << changeMark(write.changed()) << "\n";
    }
}

void textFilesAndCommands(std::ostringstream& out, const RunOutcome& outcome) {
    out << "Files " << (outcome.plan ? "that would be written" : "written") << ":\n";
    for (const FileWrite& write : outcome.changes.files) {
        out << "  " << utf8(write.file);
        if (!write.sameBytesAs.empty()) {
            out << " (copy of " << utf8(write.sameBytesAs) << ")";
        }
        out << "  " << changeMark(write.changed) << "\n";
    }
    out << "Commands " << (outcome.plan ? "that would run" : "run") << ":\n";
    for (const std::string& command : outcome.changes.commands) {
        out << "  " << utf8(command) << "\n";
    }
    if (outcome.changes.commands.empty()) {
        out << "  (none)\n";
    }
}

void textOutcome(std::ostringstream& out, const ApplyReport& report) {
    const RunOutcome& outcome = *report.outcome;
    textRegistry(out, outcome);
    textIni(out, outcome);
    textFilesAndCommands(out, outcome);
    if (outcome.result != 0) {
        out << utf8(outcome.errorMessage) << "\n" << kRunFailedLine << "\n";
    } else if (outcome.plan) {
        out << (outcome.changes.anyChanged() ? "The run would change the till.\n"
                                             : "The run would change nothing.\n");
    } else {
        out << (outcome.changes.anyChanged() ? "Configuration and installation successful: the "
                                               "till was changed.\n"
                                             : "Configuration and installation successful: "
                                               "nothing needed changing.\n");
    }
}

} // namespace

std::string shownValue(std::string_view valueName, const std::string& value) {
    return cp1252::iequals(valueName, "CorvixPassword") ? std::string(kMask) : value;
}

std::string reportText(const ApplyReport& report) {
    std::ostringstream out;
    if (!report.fault.empty()) {
        out << "The till could not be read: " << utf8(report.fault) << "\n";
    }
    for (const AnswerProblem& problem : report.problems) {
        out << report.answersFile << (problem.line > 0 ? ":" + std::to_string(problem.line) : "")
            << ": " << utf8(problem.message) << "\n";
    }
    if (!report.problems.empty()) {
        out << "Nothing was changed.\n";
    }
    if (report.outcome) {
        if (report.plan) {
            out << "Plan (nothing has been changed):\n";
        }
        textOutcome(out, report);
    }
    if (!report.notHeld.empty()) {
        out << "Read back after the run, these writes did not hold:\n";
        for (const std::string& write : report.notHeld) {
            out << "  " << utf8(write) << "\n";
        }
    }
    return out.str();
}

std::string reportJson(const ApplyReport& report) {
    ordered_json doc;
    doc["mode"] = report.plan ? "plan" : "run";
    doc["result"] = resultName(report);
    doc["exitCode"] = static_cast<int>(report.exit);
    doc["answers"] = hostText(report.answersFile);
    doc["tms"] = tmsChoiceText(report.tms);
    doc["changed"] = report.outcome && report.outcome->changes.anyChanged();
    doc["error"] = nullptr;
    if (!report.fault.empty()) {
        doc["error"] = utf8(report.fault);
    } else if (report.outcome && report.outcome->result != 0) {
        doc["error"] = utf8(report.outcome->errorMessage);
    }
    doc["problems"] = ordered_json::array();
    for (const AnswerProblem& problem : report.problems) {
        doc["problems"].push_back(
            {{"line", problem.line > 0 ? ordered_json(problem.line) : ordered_json(nullptr)},
             {"message", utf8(problem.message)}});
    }
    doc["notHeld"] = ordered_json::array();
    for (const std::string& write : report.notHeld) {
        doc["notHeld"].push_back(utf8(write));
    }
    doc["progress"] = ordered_json::array();
    doc["registry"] = ordered_json::array();
    doc["ini"] = ordered_json::array();
    doc["files"] = ordered_json::array();
    doc["commands"] = ordered_json::array();
    if (!report.outcome) {
        return dumped(doc);
    }
    const RunOutcome& outcome = *report.outcome;
    for (const std::string& status : outcome.progress) {
        doc["progress"].push_back(utf8(status));
    }
    for (const RegistryWrite& w : outcome.changes.registry) {
        const auto masked = [&](const std::optional<std::string>& v) {
            return v ? std::optional(shownValue(w.valueName, *v)) : std::nullopt;
        };
        doc["registry"].push_back({{"key", "HKEY_LOCAL_MACHINE\\" + utf8(w.keyPath)},
                                   {"name", utf8(w.valueName)},
                                   {"old", optionalText(masked(w.before))},
                                   {"new", optionalText(masked(w.after))},
                                   {"changed", w.changed()}});
    }
    for (const IniWrite& w : outcome.changes.ini) {
        doc["ini"].push_back({{"file", utf8(w.file)},
                              {"section", utf8(w.section)},
                              {"key", utf8(w.key)},
                              {"old", optionalText(w.before)},
                              {"new", optionalText(w.after)},
                              {"changed", w.changed()}});
    }
    for (const FileWrite& w : outcome.changes.files) {
        doc["files"].push_back(
            {{"file", utf8(w.file)},
             {"copyOf",
              w.sameBytesAs.empty() ? ordered_json(nullptr) : ordered_json(utf8(w.sameBytesAs))},
             {"changed", w.changed}});
    }
    for (const std::string& command : outcome.changes.commands) {
        doc["commands"].push_back(utf8(command));
    }
    return dumped(doc);
}
