#include "core/Orx.h"

#include <utility>

#include "config/ConfigKeys.h"
#include "control/Status.h"
#include "core/Log.h"
#include "core/Time.h"

namespace orx {

Orx::Orx(std::shared_ptr<MainConfig> mainConfig) : config(std::move(mainConfig)) {
    init();
}

Orx::~Orx() {
    shutdown();
}

void Orx::init() {
    openLog(config->logFile());
    log("-- ORX logging start --", Echo::no);
    ProjectorDefinitionFile definitions(config->definitionFile());
    if (const auto projector = definitions.projector(config->projector())) {
        buildProjectorControl(definitions, projector);
    } else {
        enterDumbMode();
    }
    commandQueue = std::make_shared<CommandQueue>(projectorControl);
    commandQueue->setRestartCallback([this] { restartRequested = true; });
    for (const auto& address : config->controlChannel()) {
        listeners.push_back(std::make_shared<ControlChannelListener>(address, commandQueue));
    }
}

void Orx::enterDumbMode() {
    Status::setDumb(true);
    const int debug = config->getInt(config_key::serialDebug, 0);
    if (debug == SerialSettings::noSerialDevice) Status::setDebug(true);
}

void Orx::buildProjectorControl(ProjectorDefinitionFile& definitions,
                                const std::shared_ptr<Projector>& projector) {
    const auto settings = definitions.serialSettings(config->projector());
    settings->readConfiguration(*config);
    projector->connect(settings);
    projector->applyAliases(config->aliases());
    if (settings->debug() > 0) definitions.dump();
    projectorControl = std::make_shared<ProjectorControl>(projector, *config);
}

void Orx::run() {
    for (;;) {
        startThreads();
        if (!restartRequested) return;
        restart();
    }
}

/// Returns when the command queue's loop has ended.
void Orx::startThreads() {
    for (const auto& listener : listeners)
        listener->start();
    if (projectorControl) projectorControl->start();
    commandQueue->startAndWait();
}

void Orx::restart() {
    log("ORX restarting...", Echo::yes);
    shutdown();
    config->reload();
    init();
    // Not before: where `init` fails, the destructor must find the teardown done and not wait for a
    // thread that was never started.
    shutDown = false;
    restartRequested = false;
}

void Orx::shutdown() {
    if (shutDown) return;
    commandQueue.reset();
    for (const auto& listener : listeners)
        listener->close();
    listeners.clear();
    Status::reset();
    waitForProjectorControl();
    projectorControl.reset();
    log("-- ORX logging end --", Echo::no);
    shutDown = true;
}

void Orx::waitForProjectorControl() const {
    constexpr int pollMs = 50;
    if (!projectorControl) return;
    projectorControl->stop();  // already done by QUIT and RESTART, but not by a failed start
    while (projectorControl->wasStarted() && projectorControl->isAlive())
        sleepMs(pollMs);
    projectorControl->waitUntilStopped();
}

}  // namespace orx
