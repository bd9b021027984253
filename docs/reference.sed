# What Doxygen reads instead of a page: it shows the backticks inside of a link, takes the percent sign off a word, and
# in tables takes entities for the characters that they stand for. The programs of the examples stand in a folder below
# all pages. A badge would become a figure there, and the version is at the head of each page.
/(docs\/badges\.svg)$/d
/^```/,/^```$/!{
  s/](\([a-z0-9_]*\/[A-Za-z0-9_]*\.cpp\))/](examples\/\1)/g
  s/\[`\([^`]*\)`\](/[\1](/g
  /^|/{
    s/\([ `]\)%/\1%%/g
    s/&\(quot\|amp\|apos\|lt\|gt\);/\&amp;\1;/g
  }
  /^[^|]/s/ %\([A-Za-z]\)/ \\%\1/g
}
