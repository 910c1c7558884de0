// Bodies that the library wrote, carried by SIPp from and to agents that read and write them with the library.
#include "Responder.h"
#include "Sender.h"
#include "Sipp.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <malloc.h>
#include <unistd.h>

namespace {

using namespace carrier;
using std::chrono::milliseconds;
using std::chrono::seconds;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool memoryCounts = false; // it is the sanitizer's, which looks for leaks by itself
#else
constexpr bool memoryCounts = true;
#endif

// What the process has, and what it has asked for: memory that was free before hides what is lost.
struct Kilobytes {
  std::size_t resident;
  std::size_t inUse;
};

constexpr Kilobytes allowedGrowth = {1024, 64}; // messages under way differ in size

Kilobytes memoryNow() {
  std::ifstream file("/proc/self/statm");
  std::size_t total = 0;
  std::size_t resident = 0;
  file >> total >> resident;
  const struct mallinfo2 heap = mallinfo2();
  return {resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024, (heap.uordblks + heap.hblkhd) / 1024};
}

// The memory of this process from the first tenth of its work on.
class Memory {
public:
  explicit Memory(std::size_t work) : tenth(work / 10) {}

  void look(std::size_t done) {
    const Kilobytes now = memoryNow();
    Kilobytes &most = done <= tenth ? early : late;
    most = {std::max(most.resident, now.resident), std::max(most.inUse, now.inUse)};
  }

  void expectFlat() const {
    EXPECT_GT(early.resident, 0u);
    EXPECT_GT(late.resident, 0u);
    if (memoryCounts) {
      EXPECT_LE(late.resident, early.resident + allowedGrowth.resident);
      EXPECT_LE(late.inUse, early.inUse + allowedGrowth.inUse);
    }
    const auto growth = [](std::size_t before, std::size_t after) {
      return std::to_string(static_cast<std::int64_t>(after) - static_cast<std::int64_t>(before));
    };
    testing::Test::RecordProperty("residentGrowth_kB", growth(early.resident, late.resident));
    testing::Test::RecordProperty("inUseGrowth_kB", growth(early.inUse, late.inUse));
  }

private:
  const std::size_t tenth;
  Kilobytes early{};
  Kilobytes late{};
};

std::string contentOf(const std::filesystem::path &name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void write(const std::filesystem::path &name, const std::string &content) {
  std::ofstream file(name, std::ios::binary);
  file << content;
  EXPECT_TRUE(file.flush()) << name;
}

void replaceAll(std::string &text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

std::filesystem::path scenarios() { return std::getenv("CARRIER_SCENARIOS"); }

// A folder of the test's own, with all that SIPp needs: the bodies, their numbers, and what to do with them.
std::filesystem::path prepare(const Bodies &bodies) {
  const testing::TestInfo &test = *testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(test.test_suite_name()) + "." + test.name();
  std::ranges::replace(name, '/', '.');
  const std::filesystem::path folder = std::filesystem::path(std::getenv("CARRIER_FOLDER")) / name;
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  bodies.save(folder);

  std::string numbers = "SEQUENTIAL\n";
  for (std::size_t number = 0; number < bodies.count(); ++number)
    numbers += std::to_string(number) + "\n";
  write(folder / "numbers.csv", numbers);

  // Every call sends a body of each kind.
  const std::string request = contentOf(scenarios() / "request.xml.in");
  std::string scenario = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<scenario name=\"sends bodies\">\n";
  std::size_t number = 0;
  for (const Kind &kind : kinds()) {
    std::string one = request;
    if (kind.event.empty()) replaceAll(one, "      Event: @EVENT@\n", "");
    replaceAll(one, "@METHOD@", kind.method);
    replaceAll(one, "@NUMBER@", std::to_string(++number));
    replaceAll(one, "@EVENT@", kind.event);
    std::string pattern(kind.type);
    replaceAll(pattern, "+", "\\+");
    replaceAll(one, "@TYPE_PATTERN@", pattern);
    replaceAll(one, "@TYPE@", kind.type);
    replaceAll(one, "@FILE@", kind.fileName());
    scenario += one;
  }
  write(folder / "requests.xml", scenario + "</scenario>\n");
  std::filesystem::copy_file(scenarios() / "answer.xml", folder / "answer.xml");
  return folder;
}

std::string firstOf(const std::vector<std::string> &problems) {
  return problems.empty() ? "" : problems.front() + " and " + std::to_string(problems.size() - 1) + " more";
}

constexpr std::size_t smallest = 200;

struct Case {
  std::string name;
  Transport transport;
  std::size_t calls;
  std::size_t rate;   // of calls a second, at most
  std::size_t atOnce; // calls, or messages
  int lost;           // of a hundred messages, on purpose
  std::size_t bodies; // of each kind
  std::size_t greatest;

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }
};

const Case cases[] = {
    {"SmallOverUdp", Transport::udp, 1000, 1000, 16, 0, 100, 1200},
    {"SmallOverUdpWithLosses", Transport::udp, 1000, 1000, 16, 1, 100, 1200},
    {"LargeOverTcp", Transport::tcp, 150, 1000, 8, 0, 30, 50000},
};

using Words = std::vector<std::string>;

Words withLoss(Words words, const Case &given) {
  if (given.lost) words.insert(words.end(), {"-lost", std::to_string(given.lost)});
  return words;
}

Words toSend(const Responder &to, const Case &given) {
  return {"127.0.0.1:" + std::to_string(to.port()),
          "-sf",
          "requests.xml",
          "-inf",
          "numbers.csv",
          "-l",
          std::to_string(given.atOnce),
          "-r",
          std::to_string(given.rate),
          "-m",
          std::to_string(given.calls)};
}

class Carrier : public testing::TestWithParam<Case> {};

TEST_P(Carrier, BringsBodiesToAnAgent) {
  const Case &given = GetParam();
  const Bodies bodies(given.bodies, smallest, given.greatest);
  const auto folder = prepare(bodies);
  const std::size_t requests = given.calls * kinds().size();

  Responder agent(given.transport, bodies);
  Memory memory(requests);
  Sipp sipp(folder, given.transport, withLoss(toSend(agent, given), given));
  const auto end = std::chrono::steady_clock::now() + seconds(40);
  while (sipp.isRunning()) {
    agent.step(milliseconds(10));
    memory.look(agent.requests());
    ASSERT_LT(std::chrono::steady_clock::now(), end) << sipp.said();
  }
  EXPECT_EQ(sipp.status(), 0) << sipp.said();
  EXPECT_EQ(agent.requests(), requests);
  EXPECT_EQ(firstOf(agent.problems()), "");
  memory.expectFlat();
  if (given.lost) {
    EXPECT_GT(agent.repetitions(), 0u);
  }
}

TEST_P(Carrier, TakesBodiesFromAnAgent) {
  const Case &given = GetParam();
  const Bodies bodies(given.bodies, smallest, given.greatest);
  const auto folder = prepare(bodies);
  const std::size_t requests = given.calls * kinds().size();

  const std::uint16_t port = freePort(given.transport);
  Sipp sipp(folder, given.transport,
            withLoss({"-sf", "answer.xml", "-p", std::to_string(port), "-m", std::to_string(requests)}, given));
  Sender agent(given.transport, port, bodies);
  Memory memory(requests);
  EXPECT_TRUE(agent.run(requests, given.atOnce, [&](std::size_t answered) { memory.look(answered); })) << sipp.said();
  EXPECT_EQ(firstOf(agent.problems()), "");
  EXPECT_TRUE(sipp.ends(seconds(10)));
  EXPECT_EQ(sipp.status(), 0) << sipp.said();
  memory.expectFlat();
  if (given.lost) {
    EXPECT_GT(agent.repetitions(), 0u);
  }
}

INSTANTIATE_TEST_SUITE_P(Sipp, Carrier, testing::ValuesIn(cases), [](const auto &one) { return one.param.name; });

// ---- What must not go unnoticed ------------------------------------------------------------------------------------

constexpr char vocabulary[] = "urn:ietf:params:xml:ns:dialog-info";

void replaceIn(const std::filesystem::path &name, std::string_view from, std::string_view to) {
  std::string content = contentOf(name);
  EXPECT_NE(content.find(from), content.npos) << name;
  replaceAll(content, from, to);
  write(name, content);
}

using Tamper = std::function<void(std::string &)>;
Tamper replacing(std::string from, std::string to) {
  return [=](std::string &text) { replaceAll(text, from, to); };
}

struct Fault {
  std::string name;
  std::function<void(const std::filesystem::path &folder)> onTheWay; // to an agent
  Tamper inTheAnswer;                                                // of an agent
  std::string problem;                                               // that the agent has found, or a part of it

  friend void PrintTo(const Fault &given, std::ostream *out) { *out << given.name; }
};

const Fault faults[] = {
    {"NoFault", {}, {}, ""},
    {"ByteToAgent",
     [](const auto &folder) { replaceIn(folder / "dialog_info.2", "anna-2", "anna-3"); },
     {},
     "dialog-info-2: it does not say what was meant"},
    {"MarkupToAgent",
     [](const auto &folder) { replaceIn(folder / "dialog_info.2", "/>", ">"); },
     {},
     "dialog-info-2: it cannot be read"},
    {"EndToAgent",
     [](const auto &folder) { write(folder / "dialog_info.2", ""); },
     {},
     "dialog-info-2: it cannot be read"},
    {"NamespaceToAgent",
     [](const auto &folder) { replaceIn(folder / "dialog_info.2", vocabulary, "urn:example:x"); },
     {},
     "dialog-info-2: it does not say what was meant"},
    {"TypeToAgent",
     [](const auto &folder) {
       replaceIn(folder / "requests.xml", "Content-Type: application/dialog-info+xml", "Content-Type: text/xml");
     },
     {},
     "there is no such type: text/xml"},
    {"AnswerOfAgent", {}, [](std::string &answer) { answer.clear(); }, ""},
    {"ByteOfAgent", {}, replacing("anna-2", "anna-3"), ""},
    {"EndOfAgent", {}, [](std::string &answer) { answer.pop_back(); }, ""},
    {"NamespaceOfAgent", {}, replacing(vocabulary, "urn:example:vocabularies:dialogues"), ""},
    {"TypeOfAgent", {}, replacing("application/dialog-info+xml", "application/dialog-info-xml"), ""},
};

class Damage : public testing::TestWithParam<Fault> {};

TEST_P(Damage, IsNoticed) {
  const Fault &fault = GetParam();
  const Case given = {"", Transport::udp, 5, 1000, 16, 0, 5, 1200};
  const Bodies bodies(given.bodies, smallest, given.greatest);
  const auto folder = prepare(bodies);
  if (fault.onTheWay) fault.onTheWay(folder);

  Responder agent(given.transport, bodies);
  agent.tamper = [&fault](std::string &answer) {
    if (fault.inTheAnswer && answer.find("Content-Type: application/dialog-info+xml") != answer.npos &&
        answer.find("anna-2") != answer.npos)
      fault.inTheAnswer(answer);
  };
  Words words = toSend(agent, given);
  words.insert(words.end(), {"-recv_timeout", "1000"});
  Sipp sipp(folder, given.transport, words);
  const auto end = std::chrono::steady_clock::now() + seconds(20);
  while (sipp.isRunning() && std::chrono::steady_clock::now() < end)
    agent.step(milliseconds(10));
  ASSERT_FALSE(sipp.isRunning());
  EXPECT_EQ(sipp.status(), fault.onTheWay || fault.inTheAnswer ? 1 : 0) << sipp.said();
  EXPECT_EQ(firstOf(agent.problems()).substr(0, fault.problem.size()), fault.problem);
  EXPECT_EQ(agent.problems().empty(), fault.problem.empty());
}

INSTANTIATE_TEST_SUITE_P(Sipp, Damage, testing::ValuesIn(faults), [](const auto &one) { return one.param.name; });

} // namespace
