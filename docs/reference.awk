# What Doxygen reads instead of a header: the same lines, with words for the members that need none of their own in the
# source.
#
# - Between "/// \{" and "/// \}" each declaration has the comment at the head of the group.
# - An overload without a comment directly below its sibling has the sibling's.
# - Copying, moving and comparing mean what they always mean, unless the header says otherwise.
#
# Words go in front of the declaration, on its own line, so that lines keep their numbers.

function say(words)
{
    match($0, /^ */)
    $0 = substr($0, 1, RLENGTH) "/** " words " */ " substr($0, RLENGTH + 1)
    told = 1
}

# A percent sign before a word would be taken off it.
/^ *\/\/\/ ? ? ?[^ ]/ { gsub(/ %/, " \\%"); gsub(/\(%/, "(\\%") }

# Doxygen loses its way in what is added to namespace std. The classes say that they can be keys.
/^\/\/\/ For unordered containers\./ { leftOut = 1 }
leftOut { leftOut = !/^};/; print "//"; next }

# A file counts as described, so that its macros and functions are shown and held to have words.
/^#pragma once/ { print $0 " /** \\file */"; next }

/^ *\/\/\/ \\\}/ { grouped = told = 0; comment = ""; print "//"; next }
/^ *\/\/\/ \\\{/ { grouped = 1; told = 0; comment = ""; print "//"; next }
/^ *\/\/\// {
    text = $0
    sub(/^ *\/\/\/ ?/, "", text)
    if (!told)
        comment = ""
    if (comment == "\\overload" || text == "" || text ~ /^(    |- )/)
        comment = "\\overload" # paragraphs, lists and programs can not be said again on one line
    else
        comment = comment (comment == "" ? "" : " ") text
    told = 1
    before = ""
    if (grouped)
        print "//"
    else
        print
    next
}
/^ *template<.*>$/ { print; next }

# A declaration whose name stands on the next line is read as one.
/^    [a-z][A-Za-z:_<> ]*$/ { held = $0; next }
held != "" { sub(/^ */, " "); $0 = held $0 "\n"; held = "" }

grouped && /^ *[A-Za-z#].*[(=]/ && !/^        / {
    if (/^#define/)
        print "/** " comment " */"
    else
        say(comment)
}

/^(    |ORV_API )[A-Za-z~].*\(/ {
    name = substr($0, 1, index($0, "(") - 1)
    constructs = name ~ /^ *(explicit )?[A-Z][A-Za-z0-9]*$/
    sub(/.*[ &*]/, "", name)
    argument = substr($0, index($0, "(") + 1)
    deleted = /= delete;/
    if (told)
        ;
    else if (index(argument, name " const&") == 1)
        say(deleted ? "Not to be copied." : "Copies.")
    else if (index(argument, name "&&") == 1)
        say("Moves.")
    else if (name == "operator=")
        say(deleted ? "Not to be assigned." : argument ~ /^[A-Za-z0-9]+&&/ ? "Assigns by moving." : "Assigns a copy.")
    else if (name == "operator==")
        say("True when both are equal.")
    else if (name == "operator!=")
        say("True when they are not equal.")
    else if (name ~ /^operator[<>]=?$/)
        say("The order of the values.")
    else if (name == before && !constructs)
        say(comment)
    before = told ? name : ""
}
/^ *$/ { before = "" }
!/^        / { told = 0 }
{ print }
