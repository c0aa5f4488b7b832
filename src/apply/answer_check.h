// Checks an answer file against the till it is applied to, the way the wizard's pages would have
// limited the same choices: each value must suit its setting's kind, the merchant settings must be
// entries of the wizard's lists (the profile one of those offered for the chosen live or test
// installation), and the wizard's Finish rule must hold for the settings that result.
#pragma once

#include "apply/answer_file.h"
#include "apply/till_changes.h"
#include "settings/ccaddin_registry.h"

#include <string>
#include <vector>

// The installed settings with the answers laid over them, or the problems that forbid the run.
// `programFolder` (ending in "\") holds the profile and fuel-card files the lists come from.
std::vector<AnswerProblem> applyAnswers(const Answers& answers, const std::string& programFolder,
                                        TCcAddinRegistry& settings);

// The answers the run left without effect: settings it never writes, or writes with a value of
// its own (forced folders, the default password), judged from what the run actually wrote. An
// answer that already matched the installed value is not one of them.
std::vector<AnswerProblem> unappliedAnswers(const Answers& answers,
                                            const TCcAddinRegistry& installed,
                                            const TillChanges& changes);
