#include "cases.h"

#include "filters.h"

namespace filters {

std::string inFilter(const std::string &content) { return document("<filter id=\"f\">" + content + "</filter>"); }
std::string inWhat(const std::string &content) { return inFilter("<what>" + content + "</what>"); }
std::string inTrigger(const std::string &content) { return inFilter("<trigger>" + content + "</trigger>"); }

std::string filterOf(const std::string &record) {
  return "{filter(id=f)" + (record.empty() ? "" : "{" + record + "}") + "}";
}
std::string whatOf(const std::string &record) { return filterOf(record.empty() ? "what" : "what{" + record + "}"); }
std::string triggerOf(const std::string &record) {
  return filterOf(record.empty() ? "trigger" : "trigger{" + record + "}");
}

int statusOf(const std::string &errors) { return errors.empty() ? 0 : std::stoi(errors); }

namespace {

constexpr const char *instance = "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";
constexpr const char *instanceAsI = "xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\"";

std::string missing(const char *type, const char *attribute) {
  return "-103("s + type + "," + attribute + ")@runtime/reader<SAX";
}

// An element that the tables refuse, and one that its type refuses itself.
std::string refused(const char *name) { return "-41("s + name + ")@runtime/reader<SAX"; }
std::string refusedAtOnce(const char *name) { return "-41("s + name + ")@SAX"; }

std::string unexpected(const char *element, const char *attribute) {
  return "-33("s + element + "," + attribute + ")@runtime/reader<SAX";
}

} // namespace

const std::vector<Case> &attributeCases() {
  static const std::string longText(3000, 'x');
  static const std::vector<Case> cases = {
      // ---- The set
      {document(""), ""},
      {document("", " package='presence'"), "(package=presence)"},
      {document("", " package=''"), "(package=)"},
      {document("", " package='  a  b '"), "(package=  a  b )"},
      {document("", " package='" + longText + "'"), "(package=" + longText + ")"},
      {document("", " k='v' package='p' l='&lt;&quot;'"), "(package=p @k=v @l=<\")"},
      {document("", " xmlns:v='urn:v' v:k='1' xml:lang='en'"), "(@v:k=1 @xml:lang=en)"},
      {document("", " undeclared:k='1'"), "(@undeclared:k=1)"},
      {document("", " "s + instance + " xsi:schemaLocation='a b' xsi:nonsense='' k='v'"), "(@k=v)"},
      {document("", " "s + instanceAsI + " i:type='t' k='v'"), "(@k=v)"},
      {document("", " Package='p' packag='q' packages='r'"), "(@Package=p @packag=q @packages=r)"},
      {document("", " xmlnsk='v'"), ""}, // what begins as a declaration is one

      // ---- A filter
      {document("<filter id='a' uri='sip:a' domain='d' remove='true' enabled='false'/>"),
       "{filter(id=a uri=sip:a domain=d remove=true enabled=false)}"},
      {document("<filter enabled='1' remove='0' domain='' uri='' id=''/>"),
       "{filter(id= uri= domain= remove=false enabled=true)}"},
      {document("<filter id='  a  b ' uri='  a  b ' domain='  a  b '/>"),
       "{filter(id=  a  b  uri=a b domain=  a  b )}"},
      {document("<filter id='a' uri='&#9;a&#10;&#13;b'/>"), "{filter(id=a uri=a b)}"},
      {document("<filter id='a' remove=' 1 ' enabled='&#10;0'/>"), "{filter(id=a remove=true enabled=false)}"},
      {document("<filter id='a' enabled='maybe'/>"), "{filter(id=a enabled=true)}"},
      {document("<filter id='a' remove='maybe' enabled='TRUE'/>"), "{filter(id=a remove=false enabled=true)}"},
      {document("<filter id='a' remove='' enabled=''/>"), "{filter(id=a remove=false enabled=true)}"},
      {document("<filter/><filter id='a'/>"), "{filter(id=-) filter(id=a)}", missing("FilterType", "id")},
      {document("<filter uri='u' ID='a'><what/></filter>"), "{filter(id=- uri=u @ID=a){what}}",
       missing("FilterType", "id")},
      {document("<filter id='a' k='v' xmlns:v='urn:v' v:l='w' "s + instance + " xsi:type='t' xml:lang='en'/>"),
       "{filter(id=a @k=v @v:l=w @xml:lang=en)}"},
      {document("<filter k='1' id='a' l='2' uri='u' m='3'/>"), "{filter(id=a uri=u @k=1 @l=2 @m=3)}"},

      // ---- Types that have no attributes look at none
      {document("<ns-bindings k='v' xml:lang='en'><ns-binding prefix='p' urn='u'/></ns-bindings>"), "{bindings{p=u}}"},
      {inFilter("<what k='v' xml:lang='en'/><trigger k='v' xml:lang='en'/>"), filterOf("what trigger")},

      // ---- Expressions
      {inWhat("<include type='xpath'>a</include>"), whatOf("include(type=xpath)[a]")},
      {inWhat("<include type='namespace'>a</include>"), whatOf("include(type=namespace)[a]")},
      {inWhat("<exclude type='namespace'>a</exclude>"), whatOf("exclude(type=namespace)[a]")},
      {inWhat("<include type='regex'>a</include><include>b</include>"), whatOf("include(type=xpath)[a] include[b]"),
       "-4(regex)@SAX"},
      {inWhat("<exclude type='regex'>a</exclude>"), whatOf("exclude(type=xpath)[a]"), "-4(regex)@SAX"},
      {inWhat("<include type=''/><exclude type='XPATH'/><exclude type=' xpath '/><exclude type='xpaths'/>"),
       whatOf("include(type=xpath)[] exclude(type=xpath)[] exclude(type=xpath)[] exclude(type=xpath)[]"),
       "-4()@SAX; -4(XPATH)@SAX; -4( xpath )@SAX; -4(xpaths)@SAX"},
      {inWhat("<include foo='bar'>a</include>"), whatOf("include(@foo=bar)[a]")},
      {inWhat("<include k='1' type='namespace' l='2'>a</include><exclude k='1' type='xpath' l='2'>b</exclude>"),
       whatOf("include(type=namespace @k=1 @l=2)[a] exclude(type=xpath @k=1 @l=2)[b]")},
      {inWhat("<include type='regex' k='1'>a</include>"), whatOf("include(type=xpath @k=1)[a]"), "-4(regex)@SAX"},
      {inWhat("<include xmlns:v='urn:v' v:k='1' xmlns='"s + namespaceUri + "'>a</include>"),
       whatOf("include(@v:k=1 xmlns:v=urn:v xmlns="s + namespaceUri + ")[a]")},
      {inWhat("<exclude v:k='1' xmlns:w='urn:w' xmlns:v='urn:v'>a</exclude>"),
       whatOf("exclude(@v:k=1 xmlns:w=urn:w xmlns:v=urn:v)[a]")},
      {inWhat("<include "s + instance + " xsi:type='t' k='v'>a</include>"),
       whatOf("include(@k=v xmlns:xsi=http://www.w3.org/2001/XMLSchema-instance)[a]")},
      {inWhat("<exclude "s + instanceAsI + " i:type='t' k='v'>a</exclude>"),
       whatOf("exclude(@k=v xmlns:i=http://www.w3.org/2001/XMLSchema-instance)[a]")},

      // ---- Changes
      {inTrigger("<changed from='CLOSED' to='OPEN' by='3'>a</changed>"),
       triggerOf("changed(from=CLOSED to=OPEN by=3)[a]")},
      {inTrigger("<changed from='' to=' a  b '/>"), triggerOf("changed(from= to= a  b )[]")},
      {inTrigger("<changed by='-2.5'/><changed by=' +07.50 '/><changed by='.5'/><changed by='5.'/>"),
       triggerOf("changed(by=-2.5)[] changed(by=7.5)[] changed(by=0.5)[] changed(by=5)[]")},
      {inTrigger("<changed by='abc'/><changed by=''/><changed by='1e3'/><changed by='INF'/><changed by='NaN'/>"
                 "<changed by='1,5'/><changed by='0x10'/>"),
       triggerOf("changed(by=0)[] changed(by=0)[] changed(by=0)[] changed(by=0)[] changed(by=0)[] changed(by=0)[] "
                 "changed(by=0)[]")},
      {inTrigger("<changed k='1' by='1' xmlns:v='urn:v' v:l='2'>a</changed>"),
       triggerOf("changed(by=1 @k=1 @v:l=2 xmlns:v=urn:v)[a]")},
      {inTrigger("<changed "s + instance + " xsi:type='t' From='x'/>"),
       triggerOf("changed(@From=x xmlns:xsi=http://www.w3.org/2001/XMLSchema-instance)[]")},

      // ---- Texts of a trigger have no attributes
      {inTrigger("<added k='1' xmlns:p='u' p:l='2' "s + instance + " xsi:type='t'>a</added><removed m=''>b</removed>"),
       triggerOf("added[a] removed[b]"),
       "-33(added,k)@runtime/reader; " + unexpected("added", "p:l") + "; " + unexpected("removed", "m")},

      // ---- Foreign elements keep theirs; the validator has no one to keep them
      {inWhat("<x:f xmlns:x=\"u\" k=\"1\" x:l=\"2\"/>"), whatOf("any[<x:f xmlns:x=\"u\" k=\"1\" x:l=\"2\"/>]"), "",
       "-33(,k)@runtime/reader; -33(,x:l)@runtime/reader<Vldt"},
      {inWhat("<x:f xmlns:x=\"u\" "s + instance + " xsi:type=\"t\"/>"),
       whatOf("any[<x:f xmlns:x=\"u\" "s + instance + " xsi:type=\"t\"/>]")},
  };
  return cases;
}

const std::vector<Case> &childCases() {
  static const std::vector<Case> cases = {
      // ---- Elements of the module's namespace that have no place
      {document("<bogus><filter id='x'/></bogus><filter id='f'/>"), "{filter(id=f)}", refused("bogus")},
      {inFilter("<bogus/><what/><bogus/><trigger/><bogus/>"), filterOf("what trigger"),
       refused("bogus") + "; " + refused("bogus") + "; " + refused("bogus")},
      {inWhat("<bogus><include>x</include></bogus><include>a</include>"), whatOf("include[a]"), refused("bogus")},
      {inTrigger("<bogus>x</bogus><added>a</added>"), triggerOf("added[a]"), refused("bogus")},
      {document("<what/><include/><trigger/><filter id='f'/>"), "{filter(id=f)}",
       refused("what") + "; " + refused("include") + "; " + refused("trigger")},

      // ---- Out of order
      {inWhat("<exclude>a</exclude><include>b</include><exclude>c</exclude>"), whatOf("exclude[a] exclude[c]"),
       refused("include")},
      {inTrigger("<removed>a</removed><added>b</added><removed>c</removed>"), triggerOf("removed[a] removed[c]"),
       refused("added")},
      {inFilter("<trigger/><what/><trigger/>"), filterOf("trigger trigger"), refused("what")},
      {inFilter("<what><include>a</include></what><what><include>b</include></what>"), filterOf("what{include[a]}"),
       refused("what")},
      {document("<filter id='f'/><ns-bindings><ns-binding prefix='p' urn='u'/></ns-bindings>"), "{filter(id=f)}",
       refused("ns-bindings")},

      // ---- Of other namespaces
      {inFilter("<x:f xmlns:x=\"u\">t<x:g/></x:f>"), filterOf("any[<x:f xmlns:x=\"u\">t<x:g/></x:f>]")},
      {inFilter("<what/><trigger/><x:f xmlns:x=\"u\"/><x:g xmlns:x=\"u\"/>"),
       filterOf("what trigger any[<x:f xmlns:x=\"u\"/>] any[<x:g xmlns:x=\"u\"/>]")},
      {inFilter("<x:what xmlns:x=\"u\"/>"), filterOf("any[<x:what xmlns:x=\"u\"/>]")},
      {inFilter("<x:what xmlns:x=\"u\"/><what/>"), filterOf("any[<x:what xmlns:x=\"u\"/>]"), refused("what")},
      {inWhat("<include xmlns=\"u\">a</include>"), whatOf("any[<include xmlns=\"u\">a</include>]")},
      {inTrigger("<x:f xmlns:x=\"u\"/><changed/><added/><removed/><x:f xmlns:x=\"u\"/>"),
       triggerOf("any[<x:f xmlns:x=\"u\"/>] any[<x:f xmlns:x=\"u\"/>]"),
       refused("changed") + "; " + refused("added") + "; " + refused("removed")},
      {inWhat("<cp:rule xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"/>"),
       whatOf("any[<cp:rule xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"/>]")},
      // The set takes no foreign elements; where none may stand, the name alone is tried.
      {document("<x:f xmlns:x='u'/>"), "", refused("x:f")},
      {document("<x:filter xmlns:x='u' id='a'><what/></x:filter>"), "{filter(id=a){what}}"},
      {document("<x:ns-bindings xmlns:x='u'><x:ns-binding prefix='p' urn='v'/></x:ns-bindings>"), "{bindings{p=v}}"},

      // ---- Of no namespace
      {inFilter("<what xmlns=''><include>a</include></what>"), filterOf("what{include[a]}")},
      {inFilter("<bogus xmlns=\"\"/>"), filterOf("any[<bogus xmlns=\"\"/>]")},
      {inWhat("<u:include>a</u:include>"), whatOf("include[a]")},

      // ---- Inside elements that hold text
      {inWhat("<include>a<b k='1'>x</b>c</include><exclude>d<e/>f</exclude>"), whatOf("include[ac] exclude[df]"),
       refusedAtOnce("b") + "; " + refusedAtOnce("e")},
      {inTrigger("<changed>a<x:b xmlns:x='u'><x:c/></x:b>d</changed>"), triggerOf("changed[ad]"), refusedAtOnce("x:b")},
      {inTrigger("<added>a<b k='1'>b<c/></b>d</added><removed><e>f</e></removed>"), triggerOf("added[abd] removed[f]")},

      // ---- The root
      {"<filterset xmlns='"s + namespaceUri + "'><filter id='f'/></filterset>", "{filter(id=f)}",
       "-3(filter-set,filterset)@SAX"},
      {"<p:filters xmlns:p='"s + namespaceUri + "' package='q'><p:filter id='f'/></p:filters>",
       "(package=q){filter(id=f)}", "-3(filter-set,filters)@SAX"},
      {"<filter-set xmlns='urn:other' xmlns:p='"s + namespaceUri + "'><p:filter id='f'/></filter-set>",
       "{filter(id=f)}"},
      {"<filter-set/>", ""},
  };
  return cases;
}

const std::vector<Case> &bindingCases() {
  static const std::string empty = "-16(NSBindings.count,0)@SAX";
  const auto bindings = [](const std::string &content) {
    return document("<ns-bindings>" + content + "</ns-bindings>");
  };
  static const std::vector<Case> cases = {
      {bindings("<ns-binding prefix='p' urn='urn:p'/>"), "{bindings{p=urn:p}}"},
      {bindings("<ns-binding urn='' prefix=''></ns-binding><ns-binding prefix='p' urn='u'>ignored</ns-binding>"),
       "{bindings{= p=u}}"},
      {bindings("<ns-binding prefix='  a  b ' urn='  a  b '/>"), "{bindings{  a  b =a b}}"},
      {bindings("<ns-binding prefix='p'/><ns-binding urn='u'/><ns-binding/>"), "{bindings{p=- -=u -=-}}",
       missing("NSBinding", "urn") + "; " + missing("NSBinding", "prefix") + "; " +
           "-103(NSBinding,prefix)@runtime/reader; " + missing("NSBinding", "urn")},
      {bindings("<ns-binding foo='bar' prefix='p' x:k='1' urn='u'/>"), "{bindings{p=u}}",
       "-33(NSBinding,foo)@SAX; -33(NSBinding,x:k)@SAX"},
      {bindings("<ns-binding xmlns:v='urn:v' prefix='p' "s + instance + " xsi:type='t' urn='u'/>"), "{bindings{p=u}}"},
      {bindings("<ns-binding prefix='p' urn='u' xml:lang='en' URN='v'/>"), "{bindings{p=u}}",
       "-33(NSBinding,xml:lang)@SAX; -33(NSBinding,URN)@SAX"},
      {bindings("<ns-binding prefix='p' urn='u'><x:y xmlns:x='u'><z/></x:y></ns-binding>"
                "<ns-binding prefix='q' urn='v'/>"),
       "{bindings{p=u q=v}}", refusedAtOnce("x:y")},
      {bindings("<binding prefix='p' urn='u'><ns-binding prefix='x' urn='y'/></binding><ns-binding prefix='q' "
                "urn='v'/>"),
       "{bindings{q=v}}", "-3(ns_binding,binding)@SAX"},
      {bindings("<x:f xmlns:x='u'/><ns-binding prefix='q' urn='v'/><ns-bindings/>"), "{bindings{q=v}}",
       "-3(ns_binding,x:f)@SAX; -3(ns_binding,ns-bindings)@SAX"},
      {bindings("<x:ns-binding xmlns:x='u' prefix='p' urn='v'/>"), "{bindings{p=v}}"},
      {bindings(""), "{bindings}", empty, ""},
      {bindings("  text  "), "{bindings}", empty, ""},
      {document("<ns-bindings/><filter id='f'/>"), "{bindings filter(id=f)}", empty, ""},
      {bindings("<other/>"), "{bindings}", "-3(ns_binding,other)@SAX; " + empty, "-3(ns_binding,other)@Vldt"},
      {document("<ns-bindings/><ns-bindings><ns-binding prefix='p' urn='u'/></ns-bindings>"), "{bindings}",
       empty + "; " + refused("ns-bindings"), support::byValidator(refused("ns-bindings"))},
  };
  return cases;
}

const std::vector<Case> &textCases() {
  const auto everywhere = [](const std::string &content, const std::string &text) {
    return Case{inFilter("<what><include>" + content + "</include><exclude>" + content + "</exclude></what><trigger>" +
                         "<changed>" + content + "</changed><added>" + content + "</added><removed>" + content +
                         "</removed></trigger>"),
                filterOf("what{include[" + text + "] exclude[" + text + "]} trigger{changed[" + text + "] added[" +
                         text + "] removed[" + text + "]}")};
  };
  static const std::string longText = std::string(70000, 'a') + " " + std::string(70000, 'b');
  static const std::vector<Case> cases = {
      everywhere("", ""),
      everywhere(" /a/b\n", " /a/b\n"),
      everywhere("a<![CDATA[<b>]]>&amp;<!-- no -->c&#100;<?pi no?>&lt;", "a<b>&cd<"),
      everywhere("&#13;\r\n", "\r\n"),
      everywhere("\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"),
      everywhere("//a[@b=\"c\"]", "//a[@b=\"c\"]"),
      everywhere(longText, longText),
      {inFilter("one<what>two<include>a</include>three</what>four<trigger>five<added/>six</trigger>seven"),
       filterOf("what{include[a]} trigger{added[]}")},
      {document("one<ns-bindings>two<ns-binding prefix='p' urn='u'>three</ns-binding>four</ns-bindings>five"),
       "{bindings{p=u}}"},
      {inFilter("<what><include/></what><trigger><changed/><added/><removed/></trigger>"),
       filterOf("what{include[]} trigger{changed[] added[] removed[]}")},
  };
  return cases;
}

} // namespace filters
