# Lists the programs on PATH that begin with the first word, each with the other words.
word=${1%% *}
rest=${1#"$word"}
IFS=:
for folder in $PATH; do
    for program in "$folder/$word"*; do
        [ -f "$program" ] && [ -x "$program" ] && printf '%s\n' "${program##*/}$rest"
    done
done | sort -u
