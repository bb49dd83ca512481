#include "tests/reminders/simulation/Simulation.h"

#include <QCoreApplication>

#include <cstdlib>

/// reminder_simulation HISTORIES DAYS REMINDERS SEED
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc != 5) {
        return EXIT_FAILURE;
    }
    const kpx::SimulationSize size{std::atoi(argv[2]), std::atoi(argv[3]), static_cast<unsigned>(std::atoi(argv[4]))};
    return kpx::Simulation(size, argv[1]).run() ? EXIT_SUCCESS : EXIT_FAILURE;
}
