// The client's entry: orxctl COMMAND [ARGUMENT...], orxctl ERRAND ...

#include <exception>
#include <iostream>

#include "core/StandardDescriptors.h"
#include "orxctl/CommandLine.h"

int main(int argc, char** argv) {
    try {
        orx::occupyStandardDescriptors();
        const int status = orx::orxctl::CommandLine().run(argc, argv);
        std::cout.flush();
        if (std::cout) return status;
        std::cerr << "orxctl: standard output cannot be written\n";
    } catch (const std::exception& error) {
        std::cerr << "orxctl: " << error.what() << '\n';
    }
    return 1;
}
