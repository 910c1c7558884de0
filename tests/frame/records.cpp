#include "records.h"

#include "Member.h"
#include "capture.h"
#include "rtx.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace ims;
using support::Random;

namespace frame {

Record::Record(RuntimeContext *context, const TypeSchema &schema)
    : ctx(context), type(schema), storage(::operator new(schema.size)) {
  std::memset(data(), 0, schema.size);
  initialise();
}

Record::~Record() {
  if (owned) discardRecord(ctx, type, data());
}

DocumentSchema documentOf(const TypeSchema &type) {
  DocumentSchema document{};
  document.root = "root";
  document.module = type.module;
  document.type = &type;
  document.number = 1;
  if (*type.module->uri == '\0') return document;
  // A record that keeps declarations gets back its root's one as well.
  document.declaration = type.namespaceList != noField ? Declaration::prefixInRecord : Declaration::prefix;
  document.prefix = "p";
  return document;
}

std::string printed(const TypeSchema &type, const void *record) {
  return support::captureStdout([&] { printRecord("r", type, record); });
}

std::string encode(RuntimeContext *ctx, const DocumentSchema &document, const void *value, int *status) {
  rtxSetOutputDynamic(ctx);
  int result = encodeDocument(ctx, document, value);
  if (status) {
    *status = result;
  } else {
    EXPECT_EQ(result, 0) << briefErrors(ctx);
  }
  size_t length = 0;
  const char *output = rtxGetOutput(ctx, &length);
  return output ? std::string(output, length) : std::string();
}

std::string briefErrors(RuntimeContext *ctx) {
  std::string all;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    if (i != 0) all += ' ';
    all += std::to_string(error->status);
    if (error->status == STATUS_PARSE_FAILED) continue; // its reason is the parser's
    for (uint32_t p = 0; p < error->paramCount; ++p) {
      const RtxErrorParam &param = error->params[p];
      all += p == 0 ? '(' : '|';
      if (param.kind == RTX_PARAM_TEXT) all.append(param.text, param.length);
      if (param.kind == RTX_PARAM_INT) all += "int " + std::to_string(param.intValue);
      if (param.kind == RTX_PARAM_UINT) all += "uint " + std::to_string(param.uintValue);
    }
    if (error->paramCount > 0) all += ')';
  }
  return all;
}

RtxXmlString text(RuntimeContext *ctx, std::string_view bytes) {
  return {false, rtxUTF8Strdup(ctx, std::string(bytes).c_str())};
}

void *newItem(RuntimeContext *ctx, size_t size) {
  void *item = rtxMemHeapAlloc(ctx, size);
  std::memset(item, 0, size);
  return item;
}

void appendText(RuntimeContext *ctx, RtxList &list, std::string_view bytes) {
  *appendItem<RtxXmlString>(ctx, list) = text(ctx, bytes);
}

// ---- Random values --------------------------------------------------------------------------------------------

namespace {

class Filler {
public:
  Filler(RuntimeContext *context, Random &source) : ctx(context), random(source) {}

  void fill(const TypeSchema &type, void *record) {
    if (type.content == Content::choice) {
      fillAlternative(type, record, static_cast<uint16_t>(1 + random.below(type.fieldCount)));
      return;
    }
    for (const Field &field : fieldsOf(type)) {
      bool optional = field.bit != 0 && !has(field, required);
      if (optional && random.chance(40)) continue;
      if (optional) presenceOf(record) |= field.bit;
      fillField(type, field, record);
    }
  }

private:
  void fillAlternative(const TypeSchema &type, void *choice, uint16_t selector) {
    selectorOf(choice) = selector;
    const Field &alternative = type.fields[selector - 1];
    if (alternative.kind == Kind::record) {
      initRecord(ctx, *alternative.type, static_cast<char *>(choice) + alternative.offset);
    }
    fillField(type, alternative, choice);
  }

  void fillField(const TypeSchema &type, const Field &field, void *record) {
    switch (field.kind) {
    case Kind::text: memberAt<RtxXmlString>(record, field) = textFor(field); break;
    case Kind::foreign: memberAt<RtxXmlString>(record, field) = text(ctx, foreignElement()); break;
    case Kind::uint32: memberAt<uint32_t>(record, field) = numberFor(field, UINT32_MAX); break;
    case Kind::uint16: memberAt<uint16_t>(record, field) = static_cast<uint16_t>(numberFor(field, UINT16_MAX)); break;
    case Kind::boolean: memberAt<bool>(record, field) = random.chance(50); break;
    case Kind::decimal: memberAt<double>(record, field) = (int(random.below(200001)) - 100000) / 8.0; break;
    case Kind::enumeration:
      memberAt<uint16_t>(record, field) = static_cast<uint16_t>(random.below(field.enumeration->count));
      break;
    case Kind::hexBinary: memberAt<RtxHexBinary>(record, field) = bytes(); break;
    case Kind::record:
    case Kind::choice: fill(*field.type, static_cast<char *>(record) + field.offset); break;
    case Kind::recordList:
      for (uint32_t left = count(type); left != 0; --left)
        fill(*field.type, item(*field.type, listAt(record, field)));
      break;
    case Kind::choiceList: fillChoices(type, field, listAt(record, field)); break;
    case Kind::textList:
      for (uint32_t left = count(type); left != 0; --left)
        *appendItem<RtxXmlString>(ctx, listAt(record, field)) = textFor(field);
      break;
    case Kind::foreignList:
      for (uint32_t left = type.content == Content::choice ? 1 + random.below(2) : count(type); left != 0; --left)
        appendText(ctx, listAt(record, field), foreignElement());
      break;
    case Kind::attributeList:
      for (uint32_t i = random.below(3); i != 0; --i) {
        auto *pair = appendItem<RtxNamePair>(ctx, listAt(record, field));
        pair->name = text(ctx, "extra" + std::to_string(i)).value;
        pair->value = text(ctx, support::randomText(random, 5)).value;
      }
      break;
    case Kind::namespaceList:
      for (uint32_t i = random.below(3); i != 0; --i) {
        auto *declaration = appendItem<RtxNsDecl>(ctx, listAt(record, field));
        declaration->prefix = text(ctx, "d" + std::to_string(i)).value;
        declaration->uri = text(ctx, "urn:declared:" + std::to_string(random.below(10))).value;
      }
      break;
    }
  }

  // Neighbouring runs of foreign elements would come back as one.
  void fillChoices(const TypeSchema &type, const Field &field, RtxList &list) {
    uint16_t previous = 0;
    for (uint32_t left = count(type); left != 0; --left) {
      auto selector = static_cast<uint16_t>(1 + random.below(field.type->fieldCount));
      if (selector == previous && field.type->fields[selector - 1].kind == Kind::foreignList) continue;
      fillAlternative(*field.type, item(*field.type, list), selector);
      previous = selector;
    }
  }

  void *item(const TypeSchema &type, RtxList &list) {
    void *record = newItem(ctx, type.size);
    initRecord(ctx, type, record);
    ims::appendItem(ctx, &list, record);
    return record;
  }

  uint32_t count(const TypeSchema &type) { return has(type, noEmptyList) ? 1 + random.below(2) : random.below(3); }

  uint32_t numberFor(const Field &field, uint32_t greatest) {
    uint32_t low = field.minimum;
    uint32_t high = field.maximum != 0 ? field.maximum : greatest;
    if (random.chance(10)) return low;
    if (random.chance(10)) return high;
    return low + static_cast<uint32_t>(random.next() % (uint64_t{high} - low + 1));
  }

  RtxXmlString textFor(const Field &field) {
    if (has(field, checkedDateTime))
      return text(ctx, "20" + std::to_string(10 + random.below(90)) + "-01-02T03:04:05Z");
    if (has(field, collapsed)) return text(ctx, random.chance(50) ? "one two" : "one");
    return text(ctx, support::randomText(random, 6));
  }

  // Validators object to attributes of the element itself.
  std::string foreignElement() {
    return "<w:box xmlns:w=\"urn:w\">" + support::randomForeignElement(random) + "</w:box>";
  }

  RtxHexBinary bytes() {
    uint32_t length = random.below(5);
    if (length == 0) return {0, nullptr};
    auto *block = static_cast<uint8_t *>(rtxMemHeapAlloc(ctx, length));
    for (uint32_t i = 0; i < length; ++i)
      block[i] = static_cast<uint8_t>(random.below(256));
    return {length, block};
  }

  RuntimeContext *ctx;
  Random &random;
};

} // namespace

void fillRandomly(RuntimeContext *ctx, const TypeSchema &type, void *record, Random &random) {
  Filler(ctx, random).fill(type, record);
}

} // namespace frame
