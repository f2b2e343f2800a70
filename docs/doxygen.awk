# Shows the headers to Doxygen: plain comments become documenting ones, the first of a file its own,
# what is set in below a text a block of code, and functions that stand together share a comment.
FNR == 1 {
  print "/// \\file"
  in_group = 0
}
/^ *\/\/( |$)/ {
  if (in_group) print "///@}"
  in_group = 0
  gsub(/[\\@<>#]/, "\\\\&")
  sub(/\/\//, "///")
  sub(/\/\/\/   /, "///       ")
  print
  after_comment = 1
  next
}
after_comment && /\(/ && !/class |struct |enum |#/ {
  print "///@{"
  in_group = 1
}
in_group && /^$|^ *}/ {
  print "///@}"
  in_group = 0
}
{ after_comment = 0 }
/[;,{}] +\/\/ / {
  split($0, parts, / +\/\/ /)
  comment = parts[2]
  gsub(/[\\@<>#]/, "\\\\&", comment)
  print parts[1] "  ///< " comment
  next
}
{ print }
END {
  if (in_group) print "///@}"
}
