// rkmanip: runs manipulation tasks on the simulated arm, validates documents and prints the schema.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>

#include "sequencing/RkManipulationVersion.h"
#include "tools/rkmanip/RkActionLibrary.h"
#include "tools/rkmanip/RkDocumentValidator.h"
#include "tools/rkmanip/RkTaskRunner.h"
#include "tools/rkmanip/RkTaskShow.h"
#include "tools/rkmanip/RkToolPaths.h"
#include "tools/rkmanip/RkVocabulary.h"

namespace {

const char* const kRunUsage =
    "usage: rkmanip run TASK.xml [--action PATH] [--poses POSES.xml] [--robot ROBOT.urdf] [--tip LINK] "
    "[--rate HZ]\n"
    "                   [--max-time SECONDS] [--tolerance METRES [RADIANS]] [--require-reached] [--lenient]\n"
    "                   [--strict] [--trace FILE.csv] [--report REPORT.html]\n";
const char* const kValidateUsage =
    "usage: rkmanip validate DOCUMENT.xml [--poses POSES.xml] [--robot ROBOT.urdf] [--tip LINK] [--strict]\n";
const char* const kListUsage = "usage: rkmanip list LIBRARY.xml\n";
const char* const kSchemaUsage = "usage: rkmanip schema > vocabulary.xsd\n";
const char* const kShowUsage = "usage: rkmanip show TASK.xml [--action PATH] [--poses POSES.xml] [--dot]\n";

// A number that is finite and above zero, or, with zeroAllowed, not below it.
CLI::Validator finiteNumber(bool zeroAllowed) {
  return CLI::Validator(
      [zeroAllowed](std::string& text) -> std::string {
        double value = 0.0;
        const bool number = CLI::detail::lexical_cast(text, value) && std::isfinite(value);
        if (number && (value > 0.0 || (zeroAllowed && value == 0.0))) return std::string();
        return "must be a " +
               std::string(zeroAllowed ? "finite number not below 0" : "positive finite number") + ", not " +
               text;
      },
      zeroAllowed ? "SECONDS" : "POSITIVE");
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"rkmanip " RK_MANIPULATION_VERSION ": run, check and inspect manipulation tasks"};
  app.require_subcommand(1);
  app.set_version_flag("--version", RK_MANIPULATION_VERSION);

  std::string tried;
  const std::string defaultRobot = RkToolPaths::defaultRobot(tried);
  const std::string robotHelp =
      "Robot description (URDF); its set-up (end-effector sets, home posture) comes from "
      "ROBOT.endeffectors.xml "
      "beside it. Default: " +
      (defaultRobot.empty() ? "none found (looked for " + tried + ")" : defaultRobot);
  const std::string tipHelp =
      "The link the arm's chain ends at; by default the end-effector link of the set-up, or the URDF's one "
      "deepest link";

  RkTaskRunOptions run;
  std::vector<double> tolerance;
  CLI::App* runCommand = app.add_subcommand(
      "run",
      "Run a task (a manipulationSequenceManager, manipulationSequence or waypointSequence document, or an "
      "action of a manipulationActionDirectory library) on the simulated arm");
  runCommand->add_option("task", run.taskPath, "Task file, or library file with --action")
      ->required()
      ->check(CLI::ExistingFile);
  runCommand->add_option("--action", run.actionPath,
                         "The action to run of a library (a manipulationActionDirectory document), by its "
                         "path in it, e.g. cell/pick; rkmanip list shows the paths");
  runCommand
      ->add_option(
          "--poses", run.posesPath,
          "Pose set (a poseSet document) whose named poses the task's reference-pose offsets go to; "
          "it is handed to every cycle, and a pose the task names that it lacks is refused before the "
          "run")
      ->check(CLI::ExistingFile);
  runCommand->add_option("--robot", run.robotPath, robotHelp)->check(CLI::ExistingFile);
  runCommand->add_option("--tip", run.tipLink, tipHelp);
  runCommand->add_option("--rate", run.rate, "Control cycles per simulated second (default 1000)")
      ->check(finiteNumber(false));
  runCommand
      ->add_option("--max-time", run.maxTime, "Simulated seconds after which the run stops (default 600)")
      ->check(finiteNumber(true));
  runCommand
      ->add_option(
          "--tolerance", tolerance,
          "How close a frame's end must come to its goal to count as reached: metres, and optionally "
          "radians (default 0.001 0.001)")
      ->expected(1, 2)
      ->check(finiteNumber(false));
  runCommand->add_flag("--require-reached", run.requireReached,
                       "Exit with status 1 when any frame ends short of its goal");
  runCommand->add_flag("--lenient", run.lenient, "Run a task that has problems anyway, saying so");
  runCommand->add_flag("--strict", run.strict, "Refuse a task that has warnings too");
  runCommand->add_option("--trace", run.tracePath,
                         "Write commanded and actual placements per cycle to this CSV file");
  runCommand->add_option(
      "--report", run.reportPath,
      "Write a report of the run to this HTML file, to open in a browser: summary, frames, "
      "plots of positions, errors and the tool path, and a 3D replay of the arm");

  RkValidateOptions validate;
  CLI::App* validateCommand = app.add_subcommand("validate",
                                                 "Read a document of the vocabulary, list every problem with "
                                                 "its file and line, check that it round-trips");
  validateCommand
      ->add_option("document", validate.documentPath,
                   "Document to check: a task, a pose set or any other document of the vocabulary")
      ->required();
  validateCommand
      ->add_option("--poses", validate.posesPath,
                   "Pose set a task's reference poses are checked against; without it they are not checked")
      ->check(CLI::ExistingFile);
  validateCommand
      ->add_option("--robot", validate.robotPath, "The robot a task is checked against. " + robotHelp)
      ->check(CLI::ExistingFile);
  validateCommand->add_option("--tip", validate.tipLink, tipHelp);
  validateCommand->add_flag("--strict", validate.strict, "Count warnings as problems");

  std::string libraryPath;
  CLI::App* listCommand = app.add_subcommand(
      "list", "List every directory and action path of a library of actions (a manipulationActionDirectory)");
  listCommand->add_option("library", libraryPath, "Library file")->required()->check(CLI::ExistingFile);

  CLI::App* schemaCommand = app.add_subcommand("schema", "Print an XML Schema (XSD) of the whole vocabulary");

  RkTaskShowOptions show;
  CLI::App* showCommand = app.add_subcommand(
      "show",
      "Print a task as an indented outline: sequences in run order, frames with their tags, each end "
      "effector's goal (metres; quaternion w x y z and roll-pitch-yaw in degrees), the events that end "
      "frames, "
      "waypoints, and the nominal duration of each part");
  showCommand->add_option("task", show.taskPath, "Task file (any document run takes), or library file")
      ->required()
      ->check(CLI::ExistingFile);
  showCommand->add_option("--action", show.actionPath,
                          "The action of a library to show, by its path in it (rkmanip list shows them); "
                          "without it the whole library is shown");
  showCommand
      ->add_option("--poses", show.posesPath,
                   "Pose set (a poseSet document) whose placements are shown beside the pose names the task "
                   "uses")
      ->check(CLI::ExistingFile);
  showCommand->add_flag("--dot", show.dot,
                        "Print a Graphviz digraph of the same tree instead (render it with dot -Tsvg)");

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    const std::string command = argc > 1 ? argv[1] : "";
    std::cerr << "rkmanip: " << e.what() << "\n"
              << (command == "run"        ? kRunUsage
                  : command == "validate" ? kValidateUsage
                  : command == "list"     ? kListUsage
                  : command == "schema"   ? kSchemaUsage
                  : command == "show"
                      ? kShowUsage
                      : std::string(kRunUsage) + kValidateUsage + kListUsage + kSchemaUsage + kShowUsage);
    return 2;
  }
  if (runCommand->parsed()) {
    if (run.robotPath.empty()) run.robotPath = defaultRobot;
    if (run.robotPath.empty()) {
      std::cerr << "rkmanip: no default robot found (looked for " << tried << "); name one with --robot\n"
                << kRunUsage;
      return 2;
    }
    if (!tolerance.empty()) run.positionTolerance = tolerance[0];
    if (tolerance.size() > 1) run.angleTolerance = tolerance[1];
    return RkTaskRunner::run(run, std::cout, std::cerr, isatty(STDERR_FILENO) == 1);
  }
  if (validateCommand->parsed()) {
    if (validate.robotPath.empty()) validate.robotPath = defaultRobot.empty() ? tried : defaultRobot;
    return RkDocumentValidator::validate(validate, std::cout);
  }
  if (listCommand->parsed()) return RkActionLibrary::list(libraryPath, std::cout);
  if (showCommand->parsed()) return RkTaskShow::show(show, std::cout, std::cerr);
  if (schemaCommand->parsed()) std::cout << RkVocabulary::schema();
  return 0;
}
