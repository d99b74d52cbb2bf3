# To be sourced: cv_read_version PROGRAM "$@" reads the arguments [version] [language] [bits], in that order, into
#
#   outlook   2003, or as given
#   language  English, or as given
#   cv_bits   32, or as given
#
# and ends the program with 2 where there is no such version, language or size.
cv_read_version() {
    local program=$1
    outlook=${2:-2003} language=${3:-English} cv_bits=${4:-32}
    [ -e "lang/$language.lng" ] || { echo "$program: a language of lang/, not '$language'" >&2; exit 2; }
    case "$outlook-$cv_bits" in
        2000-32 | 2002-32 | 2003-32 | 2007-32 | 2010-32 | 2013-32 | 2016-32 | 2010-64 | 2013-64 | 2016-64) ;;
        *-64) echo "$program: with 64 bits Outlook 2010, 2013 or 2016, not '$outlook'" >&2; exit 2 ;;
        *-32) echo "$program: Outlook 2000, 2002, 2003, 2007, 2010, 2013 or 2016, not '$outlook'" >&2; exit 2 ;;
        *) echo "$program: 32 or 64 bits, not '$cv_bits'" >&2; exit 2 ;;
    esac
}
