// Whether the Windows build runs under Wine, an independent implementation of the Windows
// functions that differs from Windows in a few known places. A test that meets one says so and
// checks what can be checked there; on Linux and on Windows this is always false.
#pragma once

bool runningUnderWine();
