# Compares what was measured with the budgets. Both files are comma-separated: what is measured, in as many columns as
# its name takes, and the figure last. Figures above their budgets fail, and so does what is in one file alone; only
# a target named by -v optional=TARGET may be missing as a whole.
BEGIN {
  FS = ","
  margin = 0.05
}
function name() {
  return substr($0, 1, length($0) - length($NF) - 1)
}
FNR == 1 { next }
NR == FNR {
  budget[name()] = $NF
  next
}
{
  measured[name()] = $NF
  targets[$1] = 1
}
function broken(what, why) {
  print what ": " why
  failures++
}
END {
  for (what in measured) {
    if (!(what in budget)) {
      broken(what, "has no budget")
    } else if (measured[what] > budget[what] * (1 + margin)) {
      broken(what, measured[what] " is over the budget of " budget[what])
    } else if (measured[what] < budget[what] * (1 - margin)) {
      print what ": " measured[what] " is far below the budget of " budget[what] ", which could be lowered"
    }
    compared++
  }
  for (what in budget) {
    split(what, parts, FS)
    if (!(what in measured) && (parts[1] != optional || parts[1] in targets)) broken(what, "was not measured")
  }
  print compared + 0 " figures compared, " failures + 0 " broken"
  exit failures > 0 || compared == 0
}
