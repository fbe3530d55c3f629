# Scripts with which engines make all parts, run by the engines that are here.
file it's a $(layout).toml
  [layout]
  kind = "table"
  records = 10000
  data = "d $HOME.csv"
  @number A type = "range", format = "%3U", start = 1, end = 700
# Notes each attempt at a part, and kills the first one at the part that "bad" names.
file flaky
  #!/bin/sh
  case "$*" in *--part\ *) echo "$*" | grep -o 'part [0-9]*' >> made; esac
  case "$*" in *"--part $(cat bad)"*) echo none > none; mv none bad; kill -9 $$; esac
  exec korvex "$@"
# A Slurm that knows only how to start a task again.
file scontrol
  #!/bin/sh
  echo "$@"
  exit 1
$ chmod +x flaky scontrol; korvex generate "it's a \$(layout).toml" --quiet; mv d*.csv whole
set KORVEX=<folder>/flaky
def planned ENGINE OPTIONS
  $ rm -f made d*; echo 3/12 > bad; korvex plan "it's a \$(layout).toml" --parts 12 --for <ENGINE> <OPTIONS> > plan
def joined
  $ cat d*.part-??-of-12 | cmp - whole; echo same
    same
# The part whose making was killed is made again, and no other.
def once_more
  $ sort -V made | uniq -c | awk '{ print $1, $3 }' | tr '\n' ' '
    1 1 1 2 2 3 1 4 1 5 1 6 1 7 1 8 1 9 1 10 1 11 1 12 <end>

@planned parallel
$ sh plan 2> said
  <folder>/d $HOME.csv: all 12 parts are complete, 10000 records, 50000 bytes by manifests and sizes
@joined
@once_more
# Run again, it starts nothing, unless a part is gone.
$ rm made; sh plan > said; ls | grep -c made || true
  0
$ rm d*.part-07-of-12; sh plan 2> said
  <folder>/d $HOME.csv: 11 of 12 parts are complete
  <folder>/d $HOME.csv: all 12 parts are complete, 10000 records, 50000 bytes by manifests and sizes
@joined

@planned make
$2 make -s -k -j 4 -f plan > said 2>&1
$ ls d* | grep -c manifest; make -s -j 4 -f plan
  11
  <folder>/d $HOME.csv: all 12 parts are complete, 10000 records, 50000 bytes by manifests and sizes
@joined

@planned slurm
$ head -n 1 plan; grep -x '#SBATCH --array=1-12' plan; PATH=.:$PATH; export SLURM_ARRAY_JOB_ID=8; for SLURM_ARRAY_TASK_ID in 1 2 3 4 5 6 7 8 9 10 11 12; do export SLURM_ARRAY_TASK_ID; bash plan 2> said || echo failed; done
  #!/bin/bash
  #SBATCH --array=1-12
  requeue 8_3
  failed
$ SLURM_ARRAY_JOB_ID=8 SLURM_ARRAY_TASK_ID=3 bash plan
@joined
@once_more

@planned kubernetes -o d --format sql --table "a \$(b)'c"
# The client, where there is one, reads it as what it is.
$ if command -v kubectl > said; then kubectl patch --local -f plan -p {} -o yaml > typed; else cp plan typed; fi; grep -E 'completions|parallelism|mountPath|hostPath|restartPolicy' typed | wc -l; grep completionMode plan
  5
    completionMode: Indexed
$ echo none > bad; sed -n 's/"$//; s/\\\(.\)/\1/g; s/[$][$](/$(/g; s/^ *- "part=/part=/p' plan > pod; for i in 0 1 2 3 4 5 6 7 8 9 10 11; do JOB_COMPLETION_INDEX=$i sh pod; done; korvex export "it's a \$(layout).toml" -o whole --format sql --table "a \$(b)'c" --quiet
@joined

# As many parts as needed so that none is too large; what can't be planned.
$ korvex plan "it's a \$(layout).toml" --max-bytes 2K --for make | sed -n 1,2p | sed 's/core .*/core/'
  # Makes <folder>/d $HOME.csv in 25 parts: 10000 records, 50.0 kB.
  # A part has up to 400 records and 2.0 kB; one core
each OPTIONS SAYS
  --for make | no number of parts, expected --parts or --max-bytes
  --for make --max-bytes 1 | more than 100000 parts, expected fewer or larger ones
  --for make --parts 100001 | more than 100000 parts, expected fewer or larger ones
  --for make --parts 3 --header | no file to export to, expected --output with the format
  --for make --parts 3 -o - | --output is -, expected a file for parts
do
  $ cp it* l.toml
  >2 plan l.toml <OPTIONS>
    ! <SAYS>
each OPTIONS SAYS
  --for make --max-bytes 5X | --max-bytes: "5X" is no size, expected a number of bytes such as 2000000, 500M or 1G
  --for nobody --parts 3 | --for: "nobody" is unknown, expected one of slurm, parallel, kubernetes, make
do
  >2 plan l.toml <OPTIONS>
    ! <SAYS>
    ! Run with --help for more information.
