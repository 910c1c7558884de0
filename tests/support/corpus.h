// Bodies from the field and from folders, one test for all of them.
#pragma once

#include "context.h"
#include "xmlJudge.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace support {

// The folder that a variable of the environment names, empty if it names none.
std::filesystem::path folderNamedBy(const char *variable);

// The files of a folder whose names begin so, in order.
std::vector<std::filesystem::path> filesIn(const std::filesystem::path &folder, const std::string &beginning = {});

std::string contents(const std::filesystem::path &file);

struct CorpusBody {
  std::string name; // of its file
  std::string text;
  std::optional<XmlElement> tree; // nothing if it is not well-formed
};

// The bodies of a kind, the name of a folder in the one that IMSCODEC_CORPUS names.
std::vector<CorpusBody> corpusBodies(const std::string &kind);

// Runs test with each body of a kind, given as the input of a context of its own, on whose heap test leaves nothing,
// and prints the rows that it returns. Skips the test where there is no corpus; a corpus without bodies fails.
void everyCorpusBody(const std::string &kind,
                     const std::function<std::string(RuntimeContext *ctx, const CorpusBody &body)> &test);

// A failure has records, a success none, and every record knows its place.
void expectRecordsWithPlace(RuntimeContext *ctx, int status);

// The statuses of the records kept, "0" if there is none.
std::string statusList(RuntimeContext *ctx);

// The errors of a row of the table.
std::string orClean(const std::string &errors);

} // namespace support
