// The command line of imscodec.
#include "commands.h"
#include "kinds.h"
#include "rtxContext.h"
#include "source.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <map>
#include <string>

namespace {

using namespace cli;

constexpr char overallExamples[] =
    R"(Each FILE is a body, or a SIP message; "-", or no FILE, is the standard input.
The kind of a document is found from its root element, unless --kind gives it.

What does not begin with "<" is a message, or a text that holds one, such as a capture tool exports: indented, with any
line ends. Of a message the bodies of these types count, each part of a multipart under a name such as message.sip#2;
base64 and quoted-printable are decoded, and places are those in FILE:
  application/im-iscomposing+xml  application/dialog-info+xml   application/auth-policy+xml
  application/simple-filter+xml   application/poc-settings+xml  application/3gpp-ims+xml
  application/debuginfo+xml

Exit status: 0 all good, 1 a document was bad, 2 wrong usage, an unreadable file or a message without a body to read.

Examples:
  imscodec print body.xml               what the codec reads from a body
  imscodec validate bodies/*.xml        which bodies are bad, and where
  imscodec print notify.sip             what the codec reads from the bodies of a message
  imscodec recode --indent body.xml     the body as the codec writes it
  imscodec diff old.xml new.xml         what two bodies say differently
  imscodec new ruleset                  a body to start from
  imscodec kinds                        what it can read)";

constexpr char printExamples[] = R"(Prints one line for each value, in the form of the library's own print functions.
Errors go to the standard error stream; what could be read is printed all the same.

With --stream each line of the standard input is a JSON string with a body or a message, and each is answered by one
line: {"ok":true,"kind":...,"record":...}, with "errors" if there are any, and with "bodies" instead for a message
that has not just one. A line that is no JSON string gets {"ok":false,"errors":[...]}.

Examples:
  imscodec print body.xml
  cat body.xml | imscodec print
  imscodec print --json body.xml | jq '.[0].record'
  jq .body log.json | imscodec print --stream | jq -c .record)";

constexpr char validateExamples[] = R"(Prints "FILE: ok", or each error with its place, the line and a caret under it.

With --stream each line of the standard input is a JSON string with a body or a message, and each is answered by one
line: {"ok":true,"kind":...,"validated":...}, with "errors" if there are any, and with "bodies" instead for a message
that has not just one. A line that is no JSON string gets {"ok":false,"errors":[...]}.

Examples:
  imscodec validate body.xml
  imscodec validate bodies/*.xml | grep error:
  imscodec validate --json bodies/*.xml | jq -r '.[] | select(.ok | not) | .file'
  jq .body log.json | imscodec validate --stream | grep -c '^{"ok":false')";

constexpr char recodeExamples[] =
    R"(Writes the bytes that the codec would send. A body with errors gives what could be read of it. The
bodies of a message come one after the other.

Examples:
  imscodec recode body.xml --output clean.xml
  imscodec recode --indent body.xml
  imscodec recode body.xml | imscodec validate)";

constexpr char diffExamples[] =
    R"(Prints one line for each value that differs: its path, the old value and the new one. Prefixes, declarations of
namespaces, the order of attributes, comments and white space that the codec collapses do not count. Items with an id
(dialogs, rules, filters and the like) are matched by it, other items by their position from 0. A message must have
one body only.

Exit status: 0 nothing differs, 1 something differs, 2 trouble: a file is unreadable or bad, or the kinds differ.

Examples:
  imscodec diff old.xml new.xml
  imscodec recode body.xml | imscodec diff body.xml -
  imscodec diff --json old.xml new.xml | jq -r '.[].path')";

constexpr char newExamples[] = R"(Writes what a valid body has at least, with placeholders for texts.

Examples:
  imscodec new dialog-info --indent
  imscodec new isComposing --output body.xml)";

constexpr char kindsExamples[] = R"(Examples:
  imscodec kinds
  imscodec kinds --json)";

std::string refuseUnknownKind(const std::string &name) {
  return kindNamed(name) ? std::string() : "there is no kind " + name + "; imscodec kinds lists them";
}

void addKindOption(CLI::App &command, std::string &kind) {
  command.add_option("--kind", kind, "Read the document as this kind, whatever its root element is (see kinds)")
      ->type_name("NAME")
      ->check(refuseUnknownKind);
}

void addColorOption(CLI::App &command, ColorWish &colors) {
  static const std::map<std::string, ColorWish> wishes = {
      {"auto", ColorWish::automatic}, {"always", ColorWish::always}, {"never", ColorWish::never}};
  command
      .add_option_function<std::string>(
          "--color", [&colors](const std::string &wish) { colors = wishes.at(wish); },
          "Colour messages: auto (on a terminal unless NO_COLOR is set), always or never")
      ->type_name("WHEN")
      ->check([](const std::string &wish) {
        return wishes.contains(wish) ? std::string() : "auto, always or never, and not " + wish;
      });
}

void addOutputOptions(CLI::App &command, std::string &output, bool &indented) {
  command.add_flag("--indent", indented, "Lay it out for reading");
  command.add_option("--output,-o", output, "Write to this file")->type_name("FILE");
}

int run(int argc, char **argv) {
  CLI::App app("Reads, checks and rebuilds XML bodies of IMS signalling.", "imscodec");
  app.set_version_flag("--version", std::string("imscodec ") + IMSCODEC_VERSION + " (runtime " + rtxVersion() + ")");
  app.footer(overallExamples);
  app.require_subcommand(1);

  Request request;
  std::string kind;
  std::string output = "-";
  bool indented = false;

  CLI::App *print = app.add_subcommand("print", "Decode and print what is in it");
  CLI::App *validate = app.add_subcommand("validate", "Check, and show each error in its place");
  CLI::App *recode = app.add_subcommand("recode", "Decode and encode again");
  CLI::App *diff = app.add_subcommand("diff", "Compare two bodies by meaning");
  CLI::App *fresh = app.add_subcommand("new", "Write a minimal body of a kind");
  CLI::App *kinds = app.add_subcommand("kinds", "List the kinds of documents");

  for (CLI::App *command : {print, validate, recode, diff}) {
    addKindOption(*command, kind);
    addColorOption(*command, request.colors);
  }
  for (CLI::App *command : {print, validate}) {
    command->add_option("FILE", request.files, "Documents")->type_name("");
    command->add_flag("--stream", request.stream, "Answer the standard input line by line, instead of FILE");
  }
  for (CLI::App *command : {print, validate, diff, kinds})
    command->add_flag("--json", request.json, "Write JSON");
  recode->add_option("FILE", request.files, "Document")->type_name("")->expected(0, 1);
  diff->add_option("FILE", request.files, "The old and the new document")->type_name("")->expected(2)->required();
  fresh->add_option("KIND", kind, "What to write (see kinds)")->type_name("")->required()->check(refuseUnknownKind);
  for (CLI::App *command : {recode, fresh})
    addOutputOptions(*command, output, indented);

  print->footer(printExamples);
  validate->footer(validateExamples);
  recode->footer(recodeExamples);
  diff->footer(diffExamples);
  fresh->footer(newExamples);
  kinds->footer(kindsExamples);

  try {
    app.parse(argc, argv);
    if (request.stream && !request.files.empty()) throw CLI::ExcludesError("--stream", "FILE");
  } catch (const CLI::ParseError &error) {
    return app.exit(error) == 0 ? allGood : unusable;
  }

  request.kind = kindNamed(kind);
  if (request.files.empty()) request.files = {"-"};
  if (print->parsed()) return printDocuments(request);
  if (validate->parsed()) return validateDocuments(request);
  if (recode->parsed()) return recodeDocuments(request, output, indented);
  if (diff->parsed()) return compareDocuments(request);
  if (fresh->parsed()) return newDocument(*request.kind, output, indented);
  printKinds(request.json);
  return allGood;
}

} // namespace

int main(int argc, char **argv) {
  try {
    const int status = run(argc, argv);
    cli::flushOutput();
    return status;
  } catch (const std::exception &error) {
    std::fflush(stdout);
    std::fprintf(stderr, "imscodec: %s\n", error.what());
    return cli::unusable;
  }
}
