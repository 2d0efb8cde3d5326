// rkmanip: runs manipulation tasks on the simulated arm, validates documents and prints the schema.
#include <CLI/CLI.hpp>

#include <iostream>

#include "sequencing/RkManipulationVersion.h"
#include "tools/rkmanip/RkDocumentValidator.h"
#include "tools/rkmanip/RkTaskRunner.h"
#include "tools/rkmanip/RkVocabulary.h"

#ifndef RK_DEFAULT_ROBOT
#define RK_DEFAULT_ROBOT "examples/robots/ur5e.urdf"
#endif

int main(int argc, char** argv) {
  CLI::App app{"rkmanip " RK_MANIPULATION_VERSION ": run, check and inspect manipulation tasks"};
  app.require_subcommand(1);
  app.set_version_flag("--version", RK_MANIPULATION_VERSION);

  RkTaskRunOptions options;
  options.robotPath = RK_DEFAULT_ROBOT;
  CLI::App* run =
      app.add_subcommand("run", "Run a task (a manipulationSequenceManager document) on the simulated arm");
  run->add_option("task", options.taskPath, "Task file")->required()->check(CLI::ExistingFile);
  run->add_option("--robot", options.robotPath,
                  "Robot description (URDF); end-effector sets and the home posture "
                  "come from ROBOT.endeffectors.xml beside it when present")
      ->capture_default_str()
      ->check(CLI::ExistingFile);
  run->add_option("--rate", options.rate, "Control cycles per simulated second")
      ->capture_default_str()
      ->check(CLI::PositiveNumber);
  run->add_option("--max-time", options.maxTime, "Simulated seconds after which the run is stopped")
      ->capture_default_str()
      ->check(CLI::PositiveNumber);
  run->add_option("--trace", options.tracePath,
                  "Write commanded and actual placements per cycle to this CSV file");

  std::string document;
  CLI::App* validate = app.add_subcommand(
      "validate",
      "Read a document of the vocabulary, report every problem with its line, check that it round-trips");
  validate->add_option("document", document, "Document to check")->required();

  app.add_subcommand("schema", "Print an XML Schema (XSD) of the whole vocabulary");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;
  }
  if (run->parsed()) return RkTaskRunner::run(options, std::cout);
  if (validate->parsed()) return RkDocumentValidator::validate(document, std::cout);
  std::cout << RkVocabulary::schema();
  return 0;
}
