#!/usr/bin/env perl
# rules.pl SOURCE: rules of the house that hold across files. No room with more than 25 files; no line over 130 characters (110
# is aimed at); no thread made by hand but where the architecture says so; no signal that nothing in src listens to; no public
# operation that only tests call; no icon that nothing shows. Names are told apart by spelling alone,
# so a namesake can hide one: cheap, and good enough to find what lies idle.
use strict;
use warnings;

my ($source) = @ARGV;
my @faults;
my %text; # file => its code without comments
for my $file (split /\0/, `find '$source'/src -name '*.h' -print0 -o -name '*.cpp' -print0`) {
    open my $in, '<', $file or die "$file: $!";
    my $code = do { local $/; <$in> };
    $code =~ s{//[^\n]*}{}g;
    $text{$file =~ s{^\Q$source/src/}{}r} = $code;
}
die "no sources in $source/src\n" if keys %text < 100;

my %room;
++$room{s{/[^/]*$}{}r} for keys %text;
push @faults, map { "src/$_ holds $room{$_} files: rooms inside it, by what they are for" } grep { $room{$_} > 25 } sort keys %room;

for my $file (split /\0/, `find '$source'/src '$source'/tests '$source'/bench '$source'/demo '$source'/fuzz -name '*.h' -print0 -o -name '*.cpp' -print0`) {
    open my $in, '<:encoding(UTF-8)', $file or die "$file: $!";
    while (<$in>) {
        chomp;
        push @faults, "$file:$.: " . length() . " characters" if length > 130;
    }
}

# Threads: work goes through base/jobs. These wait for more than the next job; see the table of threads.
my %threads = map { $_ => 1 } qw(platform/UserDefaults.cpp review/journal/Journal.cpp playback/read/DecodeThread.h
    playback/read/Neighbours.h app/files/FolderWatch.h media/index/SampleTables.h playback/sound/SoundReadAhead.h playback/sound/DeviceSound.cpp);
for my $file (sort grep { !m{^base/jobs/} && !$threads{$_} } keys %text) {
    push @faults, "src/$file makes a thread by hand: base/jobs has WorkQueue and shareOut"
        if $text{$file} =~ /\bstd::(?:thread\s+\w|jthread|async)|\bQThread\s+\w+|\bQThread::create|\bQThreadPool\b|QtConcurrent/;
    push @faults, "src/$file has a flag of its own: base/jobs/CancelFlag" if $text{$file} =~ /std::atomic(?:<bool>|_bool)\s*[>*\w]*[Cc]ancel/;
}

# Text that came from a file, a name or a person is shown letter by letter (base/PlainText, ui/common/PlainLabel). What could take
# mark-up stands in these files alone, each of which says why.
my %markUp = map { $_ => 1 } qw(ui/desktop/DesktopPanels.cpp ui/library/LibraryWindow.cpp ui/common/RichTextField.h
    ui/common/RichTextField.cpp ui/common/text/PastedText.cpp ui/common/text/PastedText.h);
my $literal = qr/(?:[\w:]*tr\(\s*(?:"(?:[^"\\]|\\.)*"\s*)+\)|QStringLiteral\(\s*(?:"(?:[^"\\]|\\.)*"\s*)+\)|QString\(\)|\{\})/;
sub argument_from { # the first argument after this place, brackets balanced; with the others where $all
    my ($code, $at, $all) = @_;
    my $depth = 0;
    my $end = $at;
    while ($end < length $code) {
        my $rest = substr $code, $end;
        if ($rest =~ /^"(?:[^"\\]|\\.)*"/ || $rest =~ /^'(?:[^'\\]|\\.)'/) { $end += $+[0]; next }
        my $c = substr $rest, 0, 1;
        last if !$depth && ($c eq ')' || (!$all && $c eq ','));
        ++$depth if $c =~ /[(\[{]/;
        --$depth if $c =~ /[)\]}]/;
        ++$end;
    }
    return substr($code, $at, $end - $at) =~ s/^\s+|\s+$//gr;
}
for my $file (sort grep { m{^ui/} } keys %text) {
    my $code = $text{$file};
    push @faults, "src/$file: a QLabel takes mark-up; PlainLabel shows letters"
        if $file ne 'ui/common/PlainLabel.h' && $code =~ /\bnew QLabel\b|\bQLabel\s+\w+\s*[({;]|public QLabel\b/;
    push @faults, "src/$file: shows mark-up ($1)"
        if !$markUp{$file} && $code =~ /\b(QMessageBox|QTextBrowser|QTextEdit\s*\w*[({;]|QTextDocument|setHtml|QErrorMessage|QWhatsThis|RichText|QStaticText|setWhatsThis|setStatusTip|setInformativeText)\b/
        && $1 !~ /^QTextEdit/;
    while ($code =~ /\b(setToolTip|QToolTip::showText|setWindowTitle|addAction|addMenu)\(/g) {
        my ($call, $at) = ($1, pos $code);
        my $argument = argument_from($code, $at, $call =~ /ToolTip/);
        $argument = argument_from($code, $at + length($1)) # after an icon
            if $call eq 'addAction' && $argument =~ /icon\(|Swatch\(/ && substr($code, $at) =~ /^(\s*\Q$argument\E\s*,)/;
        next if $argument =~ /QLineEdit::|^tr\([\w.]+\)$/ || ($file eq 'ui/commands/Commands.cpp' && $argument =~ /\.title$/); # the tables' own
        next if $argument =~ /plain::|^(?:\d, )?$literal$/ || $argument =~ /toolTip\(\)$/;
        next if $call eq 'addAction' && $argument !~ /"|[tT]itle|[nN]ame|text/; # an action, or an icon: its text comes second
        next if $call eq 'addMenu' && $argument =~ /^\w+(?:->\w+\(\))?$/; # a menu that is there
        push @faults, "src/$file: $call($argument): base/PlainText makes it fit to be shown";
    }
    while ($code =~ /case Qt::ToolTipRole:(.*?)(?=\n\s*(?:case (?!Qt::AccessibleTextRole)|default:))/gs) {
        my $case = $1;
        for (grep { /\breturn\b/ } split /;/, $case) {
            push @faults, "src/$file: a tool tip past base/PlainText: $_" unless /plain::toolTip|facts\.label|tr\("/ || /AccessibleTextRole/;
        }
    }
}

# Kept although nothing in src calls them: names, and why.
my %excepted;
for (split /\n/, <<'END') {
createPlaylistsWithFolders processFile updateThumbnailForMovie updateThumbnailsSequentially : entrances under their own names; bundles, links and scripts call them
checkForModifiedAudio : asked by name from outside
addDrawingToMovie removeDrawingFromMovieForFrame removeLastStrokesFromBookmarks removeLastStrokeFromDrawing removeAllBookmarks frameIsBookmarked drawingsDictionary computeTimecodeWithOffset updateFirstFrame fileIsFound : the record's own operations, whole, for those who have a record alone
setSnapshotDestination takeQuietSnapshot checkToClose : actions of the first versions; nothing offers them any more, their names stay taken
currentStrokesDictionary mHidePlaylistWindow movieReachedEnd sessionIsModified interactiveMode : state by the name under which others know it
itemsPane playlistsPane statusStrip rangeBarGeometry pictureRect isFirst isChecking waitForWriting sessionMigration : what a test or the demo's robot looks at, clicks or waits for
resolver DAYLARK_GL_FUNCTIONS : called in a form that spelling doesn't show
u24 : the boxes' third width
END
    my ($names, $why) = split /\s+:\s+/, $_, 2;
    $excepted{$_} = $why for split ' ', $names;
}

# The parts of a class by access: [access, code].
sub sections {
    my ($header) = @_;
    my @found;
    while ($header =~ /\b(class|struct)\s+(\w+)[^;{()]*\{/g) {
        my ($kind, $class, $start) = ($1, $2, pos $header);
        my ($depth, $end) = (1, $start);
        while ($depth && substr($header, $end) =~ /([{}])/) {
            $depth += $1 eq '{' ? 1 : -1;
            $end += $+[0];
        }
        my $body = substr $header, $start, $end - $start - 1;
        1 while $body =~ s/\{[^{}]*\}/;/g; # bodies of functions and nested types say nothing here
        my $access = $kind eq 'struct' ? 'public' : 'private';
        for (split /\b(public|private|protected|Q_SIGNALS)\s*(?:Q_SLOTS\s*)?:(?!:)/, $body) {
            if (/^(?:public|private|protected|Q_SIGNALS)$/) { $access = $_ }
            else { push @found, [$class, $access, $_] }
        }
    }
    return @found;
}

# Words that stand in an expression somewhere, not only in a declaration or a definition.
my %called;
for my $file (keys %text) {
    for (split /\n/, $text{$file}) {
        next if /^\s*#/;
        ++$called{$1} while /(?:\.|->|&\s*(?:\w+::)+)\s*(\w+)/g;
        next if /^\S[^=]*\b\w+::~?\w+\s*\(/ && !/[;{]\s*\S/; # the head of a definition
        my $line = $_;
        if (file_is_header($file) || /^\S/) {
            next if /^\s+(?:\[\[nodiscard\]\] |static |virtual |explicit |constexpr |inline )*(?!return\b|else\b|throw\b|case\b|delete\b|Q_EMIT\b)[\w:<>,&* ]+[ &*](\w+)\s*\([^()]*\)(?: const)?(?: noexcept)?;?\s*$/;
        }
        $line =~ s/^\S[^(]*?\b\w+::(\w+)\s*\(/(/;
        $line =~ s/^\s+(?:\[\[nodiscard\]\] |static |virtual |explicit |constexpr |inline )*(?!return\b|else\b|throw\b|case\b|delete\b|Q_EMIT\b)\w[\w:<>,&* ]*[ &*](\w+)\s*\(/(/ if file_is_header($file);
        ++$called{$1} while $line =~ /\b(\w+)\b/g;
    }
}
sub file_is_header { return $_[0] =~ /\.h$/ }

my $all = join "\n", map { $text{$_} } sort keys %text;
my (%declared, %signal, %where, %class);
for my $file (sort grep { /\.h$/ } keys %text) {
    for (sections($text{$file})) {
        my ($class, $access, $code) = @$_;
        next unless $access eq 'public' || $access eq 'Q_SIGNALS';
        for my $statement (split /;/, $code) {
            next if $statement =~ /\b(?:override|final|operator|using|friend|typedef|Q_PROPERTY|Q_ENUM)\b|= *(?:default|delete)|^\s*#/;
            $statement =~ s/template\s*<[^<>]*>//;
            $statement =~ s/\[\[\w+\]\]//g;
            next unless $statement =~ /^\s*(?:[\w:<>,&*\s]+?[\s&*>])(\w+)\s*\(/;
            my $name = $1;
            next if $name eq $class || $name =~ /^(?:Q_\w+|main|encodeWithCoder|initWithCoder)$/;
            $where{$name} //= "$file";
            $class{$name}{$class} = 1;
            if ($access eq 'Q_SIGNALS') { $signal{$name} = 1 }
            else { ++$declared{$name} }
        }
    }
}
for my $name (sort keys %signal) {
    push @faults, "signal $name in src/$where{$name}: nothing in src listens to it"
        unless $all =~ /&\s*(?:\w+::)+$name\b/ || $excepted{$name};
}
my %idle;
for my $name (sort keys %declared) {
    $idle{$name} = $where{$name} unless $called{$name};
}
push @faults, map { "operation $_ in src/$idle{$_}: only tests call it" } grep { !$excepted{$_} } sort keys %idle;

# Icons: each SVG is named somewhere.
my %icon = map { m{([^/]+)\.svg$} ? ($1 => 1) : () } split /\n/, `find '$source'/resources/icons -name '*.svg'`;
for my $name (sort keys %icon) {
    push @faults, "resources/icons/$name.svg: nothing shows it" unless $all =~ /"(?::\/icons\/)?\Q$name\E(?:\.png|\.svg)?"/;
}

push @faults, map { "rules.pl excepts $_, which isn't idle any more" } grep { !$idle{$_} } sort keys %excepted;

print map { "$_\n" } @faults;
print scalar(@faults), " faults in ", scalar(keys %text), " files\n";
exit(@faults ? 1 : 0);
