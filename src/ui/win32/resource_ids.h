// Resource numbers shared by the resource script and the code that loads them.
#pragma once

#define IDI_PARVANE 1
#define IDB_WELCOME 100
