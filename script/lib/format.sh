# What the layout of a file has to be: clang-format for C++, .editorconfig's basics for all text.

# tracked_files [PATTERN...]: NUL-separated, without those that are deleted but not yet committed.
tracked_files() {
    local file
    git -c safe.directory='*' -C "$root" ls-files -z -- "$@" |
        while IFS= read -r -d '' file; do
            [ -f "$root/$file" ] && printf '%s\0' "$file"
        done
    return 0
}

check_cxx_format() {
    tracked_files '*.cpp' '*.h' | (
        cd "$root"
        xargs -0 -r -n 20 -P 2 clang-format --dry-run -Werror
    )
}

# check_text: prints file, line and what is wrong.
check_text() {
    tracked_files | (
        cd "$root"
        xargs -0 -r perl -e '
            my $bad = 0;
            sub wrong { print STDERR "$_[0]: $_[1]\n"; $bad = 1 }
            for my $file (@ARGV) {
                open(my $in, "<:raw", $file) or die "$file: $!\n";
                local $/;
                my $text = <$in>;
                next if !defined($text) || $text eq "" || $text =~ /\0/;
                wrong($file, "no newline at the end") if $text !~ /\n\z/;
                wrong($file, "blank lines at the end") if $text =~ /\n\n\z/;
                my $number = 0;
                for my $line (split /\n/, $text) {
                    $number++;
                    wrong("$file:$number", "carriage return") if $line =~ /\r/;
                    wrong("$file:$number", "tab") if $line =~ /\t/;
                    wrong("$file:$number", "blank at the end of the line") if $line =~ / \z/;
                }
            }
            exit $bad;'
    )
}
