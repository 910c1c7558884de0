// What users would pick instead, each as far as its package was there when this was built.
#pragma once

#include "workloads.h"

namespace bench {

void addXmlTree(std::vector<NamedWorkload> &workloads); // libxml2's tree and its text writer
void addPugixml(std::vector<NamedWorkload> &workloads);
void addExpat(std::vector<NamedWorkload> &workloads);
void addGsoap(std::vector<NamedWorkload> &workloads);
void addXsdcxx(std::vector<NamedWorkload> &workloads);

std::vector<NamedWorkload> allRivals();

// Our workloads, then the rivals.
std::vector<NamedWorkload> everyWorkload();

} // namespace bench
