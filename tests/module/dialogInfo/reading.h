// What the tests of reading dialog state share: the documents and record types as values, and what reading came to.
#pragma once

#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "types.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace reading {

using namespace std::string_literals;
using namespace std::string_view_literals;
using dialogs::namespaceUri;
using support::Reading;

// What a number and a code print as that nobody wrote into the storage of a Record.
inline constexpr const char *untouchedNumber = "2779096485";
inline constexpr const char *untouchedCode = "'_UNKNOWN_'";

// A record type with its functions.
struct Type {
  const char *name;
  size_t size;
  int (*init)(RuntimeContext *ctx, void *record);
  int (*print)(const char *name, const void *record);
  void (*release)(RuntimeContext *ctx, void *record);

  struct Callbacks {
    RtSaxStartElement start;
    RtSaxCharacters characters;
    RtSaxEndElement end;
  };
  Callbacks filling;
  Callbacks checking;
  int (*initFilling)(RuntimeContext *ctx, SaxTypeHandler *handler, void *record, int32_t level);
  int (*initChecking)(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
};

namespace types {
extern const Type state, replaces, nameaddr, routeSet, param, target, sessd, participant, dialog, info;
}
inline constexpr const Type *allTypes[] = {&types::state,  &types::replaces, &types::nameaddr, &types::routeSet,
                                           &types::param,  &types::target,   &types::sessd,    &types::participant,
                                           &types::dialog, &types::info};

// A document: the element it starts with, the record it fills, and the two ways to read it.
struct Root {
  const char *element;
  const Type *type;
  int (*decode)(RuntimeContext *ctx, void *record);
  int (*validate)(RuntimeContext *ctx);
  int (*encode)(RuntimeContext *ctx, const void *record);
};

extern const Root info, dialog, state;
inline constexpr const Root *allRoots[] = {&info, &dialog, &state};

// Storage for a record, with a pattern in it so that a member that nobody wrote shows. Released at the end if it was
// initialised.
class Record {
public:
  Record(RuntimeContext *context, const Type &of);
  ~Record();
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  void init();
  int decode(const Root &root); // the context's input
  void *data() { return storage.get(); }
  template <class T> T &as() { return *reinterpret_cast<T *>(storage.get()); }

  // What its print function writes, in one line and without the prefix of the names: "state='s' state.code=200 id='d'".
  // A value of the record itself stands under "value".
  std::string text() const;

  bool initialised = false;

private:
  RuntimeContext *ctx;
  const Type &type;
  std::unique_ptr<unsigned char[]> storage;
};

// Status and parameters of each error record, oldest first: "-45(tns__state,code); -41(b)". A parse failure stands
// without its reason, which is the parser's.
std::string recorded(RuntimeContext *ctx);

Reading decodeInput(RuntimeContext *ctx, const Root &root);
int decodeStatus(RuntimeContext *ctx, const Root &root); // without a look at the record
Reading decode(RuntimeContext *ctx, const Root &root, const std::string &document);
Reading decode(const Root &root, const std::string &document);
Reading validateInput(RuntimeContext *ctx, const Root &root);
Reading validate(RuntimeContext *ctx, const Root &root, const std::string &document);
Reading validate(const Root &root, const std::string &document);

// A document with marks: a "^" stands before each place where an error is found, as often as errors are.
struct Marked {
  const Root *root;
  std::string text;

  std::string unmarked() const;
};

// All of a document.
Marked whole(const Root &root, std::string text);

// content in a root element in the default namespace with its required attributes: version 1, state full, entity "e"
// of dialog-info; the id "d" of dialog.
Marked in(const Root &root, std::string_view content);

// The same in a dialog behind its state, in that dialog's local participant, and in the participant's target.
Marked inDialog(const std::string &content);
Marked inLocal(const std::string &content);
Marked inTarget(const std::string &content);
// What the record of inDialog prints as, with these members.
std::string dialogWith(const std::string &members);

// A record's text without the declarations that state, nameaddr and sessd keep. Those within a fragment are in double
// quotes.
std::string withoutDeclarations(const std::string &record);

// A body that uses everything, with the module's own elements as "q:name" for support::spell.
inline constexpr std::string_view fullBody =
    "<q:dialog-info version=\"7\" state=\"partial\" entity=\"sip:bob@biloxi.example\">\n"
    " <q:dialog id=\"d1\" call-id=\"c\" local-tag=\"l\" remote-tag=\"r\" direction=\"recipient\">\n"
    "  <q:state event=\"remote-bye\" code=\"486\">terminated</q:state>\n"
    "  <q:duration>145</q:duration>\n"
    "  <q:replaces call-id=\"rc\" local-tag=\"rl\" remote-tag=\"rr\"/>\n"
    "  <q:referred-by display-name=\"Carol\">sip:carol@c.example</q:referred-by>\n"
    "  <q:route-set><q:hop>sip:p1</q:hop><q:hop>sip:p2</q:hop></q:route-set>\n"
    "  <q:local><q:identity display-name=\"Bob\">sip:bob</q:identity>\n"
    "   <q:target uri=\"sip:pc1\"><q:param pname=\"audio\" pval=\"true\"/><q:param pname=\"video\" "
    "pval=\"\"/></q:target>\n"
    "   <q:session-description type=\"application/sdp\">v=0</q:session-description><q:cseq>4294967295</q:cseq>\n"
    "   <x:f xmlns:x=\"urn:x\">t<x:g/></x:f></q:local>\n"
    "  <q:remote/>\n"
    "  <x:f xmlns:x=\"urn:x\"/><y xmlns=\"urn:y\"/>\n"
    " </q:dialog>\n"
    " <q:dialog id=\"d2\"><q:state/></q:dialog>\n"
    " <x:f xmlns:x=\"urn:x\"/>\n"
    "</q:dialog-info>";

// What the attributes of in() print as.
inline constexpr const char *infoEnd = "version=1 state='full' entity='e'";

// A document and what it comes to.
struct Case {
  Marked document;
  std::string record; // as Record::text
  std::string errors; // as recorded()
  // Of the validator. Null: those of the decoder under the validator's name for a code, but for the count of hops.
  const char *validatorErrors = nullptr;
};

// Decodes and validates in every form of input, and compares the record, the errors, the status, the places, and in
// which source the errors say they were found.
void expectCase(const Case &expected);
void expectCases(std::initializer_list<Case> cases);

} // namespace reading
