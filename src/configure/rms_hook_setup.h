// Registers the card add-in with RMS Store Operations: one transaction hook and one Z-report
// hook among the numbered entries under the Hooks key. An entry of the same hook type is taken
// over and rewritten, so running the registration again never adds a duplicate.
#pragma once

class TRmsHookSetup {
public:
    // Neither reports anything: a registry fault ends the registration quietly and whatever was
    // already written stays.
    void AddTransactionHook();
    void AddZReportHook();
};
