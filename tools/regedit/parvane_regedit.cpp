// parvane-regedit FILE.reg: imports a registry file in the format Windows' regedit exports into
// the till named by PARVANE_ROOT (see regedit/registry_file.h). Used to give a demo or test till
// the settings of an earlier installation.
#include "regedit/registry_file.h"

#include <fstream>
#include <iostream>
#include <stdexcept>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: parvane-regedit FILE.reg   (PARVANE_ROOT names the till)\n";
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::cerr << "parvane-regedit: cannot read " << argv[1] << "\n";
        return 1;
    }
    try {
        importRegistryFile(in);
    } catch (const std::exception& fault) {
        std::cerr << "parvane-regedit: " << argv[1] << ": " << fault.what() << "\n";
        return 1;
    }
    return 0;
}
