#!/usr/bin/perl
# older-kernel.pl COMMAND...: runs a command without the kernel's newer system calls (x86-64 only).
#
# Debian's proot does not know these and passes their paths unchanged, so programs would look for files outside of the
# root. If a call seems not to exist, they use an older one.
use strict;
use warnings;

my %denied_calls = (
	renameat2 => 316, statx => 332, io_uring_setup => 425, clone3 => 435, openat2 => 437, faccessat2 => 439,
	fchmodat2 => 452,
);
my ($allow, $answer_no_such_call) = (0x7fff0000, 0x00050000 | 38);
my ($prctl, $set_seccomp, $set_no_new_privileges, $filter_mode) = (157, 22, 38, 2);

# A seccomp filter: loads the call's number, answers denied calls, allows the rest.
my $program = pack 'SCCL', 0x20, 0, 0, 0;
for my $number (values %denied_calls) {
	$program .= pack 'SCCL SCCL', 0x15, 0, 1, $number, 0x06, 0, 0, $answer_no_such_call;
}
$program .= pack 'SCCL', 0x06, 0, 0, $allow;
my $filter = pack 'Sx6P', length($program) / 8, $program;

syscall($prctl, $set_no_new_privileges, 1, 0, 0, 0) == 0 or die "prctl: $!\n";
syscall($prctl, $set_seccomp, $filter_mode, $filter, 0, 0) == 0 or die "seccomp: $!\n";
exec @ARGV or die "$ARGV[0]: $!\n";
