// zoom-to HOST STEPS: moves the zoom of a projector, and says where it is when it has arrived.

#include <chrono>
#include <exception>
#include <iostream>
#include <orx/client/Client.h>
#include <string>

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::cerr << "Usage: zoom-to HOST[:PORT] STEPS\n";
        return 1;
    }
    try {
        using namespace orx::client;
        const Client projector(Address::parse(argv[1]));
        projector.send(Request(std::string("ZOOMX ") + argv[2]));
        DaemonStatus last;
        const auto rest = projector.waitUntilAtRest(
            std::chrono::minutes(2), [&last](const DaemonStatus& status) { last = status; });
        const auto* const zoom = last.axis("zoom");
        if (rest != Rest::reached || zoom == nullptr) {
            std::cerr << "zoom-to: " << argv[1] << " is not there yet, or has no projector\n";
            return 1;
        }
        std::cout << "zoom " << zoom->positionText() << '\n';
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "zoom-to: " << error.what() << '\n';
        return 1;
    }
}
