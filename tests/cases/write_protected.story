# Write-protected settings are read by all commands and replaced by none.
file l.toml
  @layout
  @number A type = "default"
> generate l.toml --quiet
$ chmod 444 d.fif
remember
>1 generate l.toml
  ! d.fif: 99026:Failed to write to the file.
  ! reason: Permission denied
> preview l.toml --records 1
  ...
> count l.toml
  ...
unchanged
