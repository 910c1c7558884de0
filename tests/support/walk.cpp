#include "walk.h"

namespace support {

std::unique_ptr<Context> contextWithErrorLimit(uint32_t limit) {
  return std::make_unique<Context>([limit](RuntimeOptions &options) { options.errorLimit = limit; });
}

std::vector<std::string> linesOf(const std::string &log) {
  std::vector<std::string> lines;
  for (size_t at = 0; at < log.size();) {
    const size_t end = log.find('\n', at);
    lines.push_back(log.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

std::string changedLines(const std::string &log, const std::function<std::string(const std::string &line)> &change) {
  std::string all;
  for (const std::string &line : linesOf(log))
    all += change(line);
  return all;
}

std::string withoutResults(const std::string &log) {
  return changedLines(log, [](const std::string &line) { return line.substr(0, line.find(" -> ")) + "\n"; });
}

void expectLog(uint32_t errorLimit, const std::string &log, const std::string &expected, bool returnsUnrecorded) {
  EXPECT_EQ(withoutResults(log), withoutResults(expected));
  if (errorLimit == errorLimits[0]) {
    EXPECT_EQ(log, expected);
  }
  if (errorLimit == 0 && !returnsUnrecorded) {
    EXPECT_EQ(log, withoutResults(expected)) << "nothing recorded, nothing returned";
  }
}

const std::string &LimitedErrors::under(uint32_t errorLimit) const {
  return errorLimit == 0 ? none : errorLimit == 1 ? one : all;
}

void expectWalk(const WalkExpectation &expected, const WalkReaders &readers) {
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + expected.text);
    const std::string &errors = expected.errors.under(limit);
    const Walk walked = readers.decoder(*contextWithErrorLimit(limit), expected.text);
    EXPECT_EQ(walked.parse, 0);
    expectLog(limit, walked.log, expected.log, expected.returnsUnrecorded);
    EXPECT_EQ(walked.record, expected.record);
    EXPECT_EQ(walked.errors, errors);

    const Walk checked = readers.validator(*contextWithErrorLimit(limit), expected.text);
    EXPECT_EQ(checked.parse, 0);
    expectLog(limit, checked.log, expected.validatorLog.empty() ? expected.log : expected.validatorLog,
              expected.returnsUnrecorded);
    if (readers.byValidator) {
      EXPECT_EQ(checked.errors, readers.byValidator(errors));
    }

    const auto ctx = contextWithErrorLimit(limit);
    const Reading reading = readers.inOneCall(*ctx, expected.text);
    EXPECT_EQ(reading.record, expected.record);
    EXPECT_EQ(reading.errors, errors);
    EXPECT_EQ(reading.status, rtxErrGetFirstError(*ctx));
  }
}

} // namespace support
