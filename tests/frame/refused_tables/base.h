// A type whose tables are right. Each source beside this file changes one thing, by defining a macro first; its first
// line names the reason for which the compiler must refuse it, or says that it is accepted.
#include "SchemaBuilder.h"
#include "rtxTypes.h"

struct Sample {
  uint32_t m;
  RtxXmlString t_name;
  uint32_t t_age;
  RtxList t_nick;
  RtxAnyList anyElems;
  RtxXmlString t_id;
  RtxXmlString t_lang;
};

#ifndef AGE_BIT
#define AGE_BIT .bit = 1
#endif
#ifndef NICK_OPTIONS
#define NICK_OPTIONS
#endif
#ifndef LANG_BIT
#define LANG_BIT .bit = 2
#endif
#ifndef ID_OPTIONS
#define ID_OPTIONS
#endif
#ifndef NAME_ELEMENT
#define NAME_ELEMENT "name"
#endif
#ifndef LAST_ELEMENTS
#define LAST_ELEMENTS {"nick", 2, 0, RTSAX_UNBOUNDED}, {"", 2, 0, RTSAX_UNBOUNDED},
#endif
#ifndef LAST_STATES
#define LAST_STATES 3, 3, 3, 3, NO, NO, 4, 4, 4, 4,
#endif
#ifndef AGE_STATE
#define AGE_STATE 2
#endif
#ifndef ATTRIBUTES
#define ATTRIBUTES "id", "lang"
#endif
#ifndef PINNED
#define PINNED                                                                                                         \
  { File::base, 0, step::checkContext, 10 }
#endif
#ifndef TYPE_NUMBER
#define TYPE_NUMBER 1
#endif
#ifndef TYPE_FLAGS
#define TYPE_FLAGS 0
#endif
#ifndef SAMPLE_ROWS
#define SAMPLE_ROWS                                                                                                    \
  ELEMENT(Sample, t_name), ELEMENT(Sample, t_age, AGE_BIT), ELEMENT(Sample, t_nick, NICK_OPTIONS),                     \
      ELEMENT(Sample, anyElems), ATTRIBUTE(Sample, t_id, ID_OPTIONS), ATTRIBUTE(Sample, t_lang, LANG_BIT),
#endif

using namespace ims;

constexpr ModuleSchema module = {"Sample", {"a", "b", "c", "d", "e"}, "t_", nullptr, 2, nullptr, false};
constexpr RtSaxElementInfo elements[] = {{NAME_ELEMENT, 2, 1, 1}, {"age", 2, 0, 1}, LAST_ELEMENTS};
constexpr uint8_t NO = RTSAX_NOT_ALLOWED;
constexpr uint8_t states[] = {1, NO, NO, NO, NO, NO, AGE_STATE, NO, NO, RTSAX_FINAL, LAST_STATES};
constexpr const char *attributes[] = {ATTRIBUTES};
constexpr PinnedLine pinned[] = {PINNED};
constexpr TypeOptions options = {.name = "Sample",
                                 .module = &module,
                                 .number = TYPE_NUMBER,
                                 .content = Content::elements,
                                 .flags = TYPE_FLAGS,
                                 .elements = elements,
                                 .states = states,
                                 .attributes = attributes,
                                 .requiredAttributes = 1,
                                 .pinned = pinned};
constexpr Field rows[] = {SAMPLE_ROWS};
constexpr auto fields = placeFields<Sample>(rows, options);
extern constexpr TypeSchema SampleSchema = makeType<Sample>(fields, options);
