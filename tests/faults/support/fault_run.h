// Runs a program again and again, failing another of its system calls each time.
// Room: tests/faults/support.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/e2e/support/program.h"

/// How a run ended.
struct FaultedRun {
    Outcome outcome;
    bool killed = false;  ///< by the fault
};

/// A run whose outcome can be checked. The program works in the folder "work" of a scratch folder.
struct Scenario {
    /// Makes the files that the run needs.
    std::function<void(const ScratchFolder&)> prepare;
    /// The program and its arguments.
    std::function<std::vector<std::string>(const ScratchFolder&)> command;
    /// What is wrong after the run: one text for each finding.
    std::function<std::vector<std::string>(const ScratchFolder&, const FaultedRun&)> findings;
    std::string root = "work";  ///< calls fail that concern this folder; the settings are in "settings"
};

/// What happens at the chosen call.
struct Fault {
    std::string call;    ///< a kind that the library in ../shim knows, or "any"
    std::string action;  ///< an error number, "kill" or "short"
    bool stays = false;  ///< all later calls of the kind fail as well
};

struct Sweep {
    std::vector<std::string> findings;  ///< of all runs, each with the fault that led to it
    std::size_t hits = 0;               ///< runs in which the fault took place
    std::size_t calls = 0;              ///< calls of the kind in a run without a fault
};

/// Fails each call in turn, until a run no longer makes a call of that number.
Sweep FailEachCall(const Scenario& scenario, const Fault& fault);

/// Runs a scenario with one fault at the call with this number, from 1; 0 for none. Returns the findings, or
/// nothing if the call wasn't made. `kinds` receives the kinds of all calls in order.
std::optional<std::vector<std::string>> FailOneCall(const Scenario& scenario, const Fault& fault,
                                                    std::size_t number,
                                                    std::vector<std::string>* kinds = nullptr);

/// The command and variables of a run of Varnel with its settings beside the work folder.
std::vector<std::string> VarnelCommand(std::vector<std::string> arguments);

/// The path of a program that saves as no program should (see ../shim/careless_writer.cpp).
std::string CarelessWriter();
