#include "rivals.h"

namespace bench {

std::vector<NamedWorkload> allRivals() {
  std::vector<NamedWorkload> rivals;
  addXmlTree(rivals);
#ifdef BENCH_PUGIXML
  addPugixml(rivals);
#endif
#ifdef BENCH_EXPAT
  addExpat(rivals);
#endif
#ifdef BENCH_GSOAP
  addGsoap(rivals);
#endif
#ifdef BENCH_XSDCXX
  addXsdcxx(rivals);
#endif
  return rivals;
}

std::vector<NamedWorkload> everyWorkload() {
  std::vector<NamedWorkload> every = allWorkloads();
  for (NamedWorkload &rival : allRivals())
    every.push_back(rival);
  return every;
}

} // namespace bench
