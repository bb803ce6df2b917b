#include <array>
#include <string>
#include <vector>

#include "harness/Clock.h"
#include "harness/Cores.h"
#include "harness/UdpClient.h"
#include "rows/Rows.h"

namespace orx::bench {
namespace {

constexpr const char* question = "STATUS";

/// A daemon and an echo, and a client of each.
struct Answering {
    Answering(const Run& run, int core, int channels = 1)
        : ports(freePorts(channels)),
          echoPort(freePort()),
          daemon(run.setup.command({.ports = ports}), core),
          echo(Setup::limit("udp_echo", {std::to_string(echoPort)}), core),
          daemonClient(ports.front()),
          echoClient(echoPort) {
        daemonClient.waitForAnswer(question);
        echoClient.waitForAnswer(question);
    }

    std::vector<int> ports;
    int echoPort;
    Server daemon;
    Server echo;
    UdpClient daemonClient;
    UdpClient echoClient;
};

/// So short that what disturbs one side disturbs the other, so long that each is at home.
constexpr int turn = 100;

void askInTurn(const UdpClient& client, Samples& samples) {
    for (int asked = 0; asked < turn; ++asked)
        samples.add(client.ask(question));
}

/// The rate and the processor time of a server with many questions under way.
struct Load {
    Samples rate;  ///< answers a second
    double cpuTime = 0;

    void measure(const Server& server, const UdpClient& client, long questions) {
        constexpr int inFlight = 64;
        const auto before = server.cpuTime();
        const Stopwatch stopwatch;
        client.flood(question, questions, inFlight);
        rate.add(static_cast<double>(questions) / stopwatch.seconds());
        cpuTime += server.cpuTime() - before;
    }
};

/// Measures with 64 questions under way at once.
void reportLoad(const Run& run, const Placement& placement, const std::string& name, Bound rate,
                Bound cpuTime) {
    constexpr int turns = 50;
    const long questions = run.samples(100'000) / turns;
    stayOn(placement.client);
    const Answering servers(run, placement.server);
    Load ours;
    Load limit;
    for (int done = 0; done < turns; ++done) {
        ours.measure(servers.daemon, servers.daemonClient, questions);
        limit.measure(servers.echo, servers.echoClient, questions);
    }
    run.add(ratioRow(name, "1/s", ours.rate.median(), limit.rate.median(), rate));
    const double hundredThousands = static_cast<double>(turns * questions) / 1e5;
    run.add(ratioRow("  CPU of 100,000", "s", ours.cpuTime / hundredThousands,
                     limit.cpuTime / hundredThousands, cpuTime));
}

}  // namespace

void measureStatus(const Run& run) {
    constexpr std::array bounds{1.15, 1.10};
    std::size_t place = 0;
    for (const auto& placement : placements()) {
        stayOn(placement.client);
        const Answering servers(run, placement.server);
        Pair pair;
        for (int turns = run.samples(20'000) / turn; turns > 0; --turns) {
            askInTurn(servers.daemonClient, pair.ours);
            askInTurn(servers.echoClient, pair.limit);
        }
        run.add(medianRow(std::string("STATUS, ").append(placement.name), "us", pair,
                          atMost(bounds.at(place++))));
    }
}

void measureStatusInFlight(const Run& run) {
    const auto [one, two] = placements();
    constexpr auto* name = "STATUS, 64 in flight, ";
    {
        const Unhurried unhurried;
        reportLoad(run, one, std::string(name).append(one.name), atLeast(0.8), atMost(1.4));
    }
    reportLoad(run, one, "  where each answer may stop the server", {}, {});
    reportLoad(run, two, std::string(name).append(two.name), atLeast(0.8), atMost(1.4));
}

void measureChannels(const Run& run) {
    for (const auto& placement : placements()) {
        stayOn(placement.client);
        const Answering one(run, placement.server, 1);
        const Answering four(run, placement.server, 4);
        const Answering sixteen(run, placement.server, 16);
        Pair ofFour;
        Pair ofSixteen;
        for (int turns = run.samples(10'000) / turn; turns > 0; --turns) {
            askInTurn(one.daemonClient, ofFour.limit);
            askInTurn(four.daemonClient, ofFour.ours);
            askInTurn(sixteen.daemonClient, ofSixteen.ours);
        }
        ofSixteen.limit = ofFour.limit;
        constexpr double flat = 1.05;
        const auto where = std::string(" of 1, ").append(placement.name);
        run.add(medianRow("STATUS, 4 channels" + where, "us", ofFour, atMost(flat)));
        run.add(medianRow("STATUS, 16 channels" + where, "us", ofSixteen, atMost(flat)));
    }
}

}  // namespace orx::bench
