// parvane-apply: the wizard's configuration run without the wizard, for fleet tools.
#include "apply/apply_command.h"
#include "platform/platform.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    try {
        std::string programFolder;
        try {
            programFolder = platform::programFolder();
        } catch (const std::exception&) {
            // Reported as an unreadable till once the arguments are known to be sound.
        }
        return applyCommand(std::vector<std::string>(argv + 1, argv + argc), programFolder,
                            std::cout, std::cerr);
    } catch (const std::exception& e) {
        std::cerr << "parvane-apply: " << e.what() << "\n";
        return 1;
    }
}
