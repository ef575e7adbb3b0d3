#!/usr/bin/env perl
# packages.pl SOURCE BUILD: what the build in BUILD really read (headers, CMake files, libraries) and the programs that tests
# start each belong to a package that SOURCE/scripts/packages pulls in through dependencies alone: recommended ones aren't
# installed on a bare machine. Names the file and the package that is missing. Needs dpkg.
use strict;
use warnings;

my ($source, $build) = @ARGV;
my (%depends, %provides, %bare);
for (split /\n/, `dpkg-query -W -f '\${db:Status-Abbrev}\t\${Package}\t\${Depends}, \${Pre-Depends}\t\${Provides}\t\${Essential}\n'`) {
    my ($status, $package, $depends, $provides, $essential) = split /\t/;
    next unless $status =~ /^ii/;
    $depends{$package} = [grep { /\S/ } split /,/, $depends];
    push @{$provides{$_}}, $package for map { s/[\s(].*//sr } grep { /\S/ } map { s/^\s+//r } split /,/, $provides // '';
    $bare{$package} = 1 if ($essential // '') eq 'yes' || $package =~ /^(apt|bash|git)$/;
}

# The first of several alternatives is what a bare machine gets.
my (%closure, @queue);
sub pull {
    my ($name) = @_;
    for my $package ($depends{$name} ? $name : @{$provides{$name} // []}) {
        next if $closure{$package}++;
        push @queue, $package;
    }
}
open my $list, '<', "$source/scripts/packages" or die "$source/scripts/packages: $!";
my @listed = map { /^(?:build|run|test)\s+(\S+)/ ? $1 : () } <$list>;
my @missing;
for (@listed) {
    push @missing, "listed but not installed: $_\n" unless $depends{$_} || $provides{$_};
    pull($_);
}
pull($_) for keys %bare;
while (defined(my $package = shift @queue)) {
    for (@{$depends{$package}}) {
        my ($first) = split /\|/;
        pull($first =~ /^\s*([^\s:(]+)/ ? $1 : next);
    }
}

my %read; # file => what read it
# Headers: ninja's dependency log.
for (split /\n/, `ninja -C '$build' -t deps`) {
    $read{$1} //= 'a header' if m{^\s+(/usr/\S+)$};
}
my $headers = keys %read;
# CMake's own files, and the libraries in the link lines.
open my $ninja, '<', "$build/build.ninja" or die "$build/build.ninja: $!";
while (<$ninja>) {
    if (/^build build\.ninja:/) {
        $read{$_} //= 'a file for CMake' for grep { m{^/usr/} && !m{^/usr/share/cmake-} } split;
    }
    elsif (/^\s+LINK_LIBRARIES = (.*)/) {
        $read{$_} //= 'a library' for grep { m{^/usr/\S+\.(?:so|a)} } map { s/^-Wl,[^\/]*//r } split ' ', $1;
    }
}
# Programs: what tests and scripts name and this machine has.
my %tried;
for my $file (split /\0/, `find '$source'/tests '$source'/demo '$source'/scripts '$source'/run.sh '$source'/test.sh -type f \\( -name '*.cpp' -o -name '*.h' -o -name '*.sh' -o -name CMakeLists.txt \\) -print0`) {
    next if $file =~ m{/bare\.sh$}; # asks for what it needs itself, of those who run it
    open my $in, '<', $file or die "$file: $!";
    my $text = do { local $/; <$in> };
    my @names;
    if ($file =~ /\.(?:cpp|h)$/) {
        @names = $text =~ /\b(?:start|startDetached|execute|findExecutable)\(\s*(?:QStringLiteral\()?u?"([a-z][a-z0-9+_-]*)"/g;
        $text =~ s{//[^\n]*}{}g;
        push @names, $text =~ /(?:\bexec|sh -c "?)\s+([a-z][a-z0-9+_-]+)/g;
    }
    else {
        $text =~ s/^\s*#.*//mg;
        @names = $text =~ /(?:^|[;&|(]|COMMAND|\bexec|\bdo|\bthen|\$\(|--)\s*([a-z][a-z0-9+_-]{2,})(?=\s)/mg;
    }
    for my $name (@names) {
        next if $tried{$name}++;
        my ($path) = grep { -x } map { "$_/$name" } qw(/usr/bin /bin /usr/sbin /sbin);
        $read{$path} //= "a program, by " . ($file =~ s{^\Q$source/}{}r) if $path;
    }
}

# Files to packages; /usr/lib may be owned as /lib.
my %owner;
my @files = sort keys %read;
while (my @some = splice @files, 0, 500) {
    my @asked = map { ($_, m{^/usr(/(?:s?bin|lib).*)} ? $1 : ()) } @some;
    open my $answers, '-|', 'sh', '-c', 'exec dpkg-query -S "$@" 2>/dev/null', 'sh', @asked or die $!;
    while (<$answers>) {
        next if /^diversion/;
        my ($packages, $path) = /^(.*): (\/.*)$/ or next;
        push @{$owner{$path}}, map { s/:.*//r } split /, /, $packages;
    }
}
my $known = 0;
for my $file (sort keys %read) {
    my @owners = map { @{$owner{$_} // []} } $file, $file =~ s{^/usr}{}r;
    if (!@owners) { # a link made by alternatives or by hand: what it leads to counts
        my $real = `readlink -f '$file'`;
        chomp $real;
        @owners = map { s/:.*//r } split /, /, (`dpkg-query -S '$real' 2>/dev/null` =~ /^(.*?): \//)[0] // '';
    }
    ++$known if @owners;
    next if grep { $closure{$_} } @owners;
    push @missing, sprintf "%s (%s): %s\n", $file, $read{$file},
        @owners ? "scripts/packages lacks " . join(' or ', @owners) : 'belongs to no package';
}
die "only $headers headers were found in $build: has it been built?\n" if $headers < 200;
if (@missing) {
    print @missing;
    exit 1;
}
printf "%d files read (%d headers), all from %d listed packages and what these depend on\n", $known, $headers, scalar @listed;
