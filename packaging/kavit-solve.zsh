#compdef kavit-solve

_arguments -s \
    '--max-positions[positions that may be stored]:positions:' \
    '--blocks[most boxes a level may have]:boxes:' \
    '--max-time[seconds for each level]:seconds:' \
    '--opt-level[moves optimizer]:level:((0\:none 1\:something 2\:"something more" 3\:"something plus"))' \
    '--special[optimize across both sides]' \
    '--search[side to search from]:side:(both forward backward)' \
    '--hash[way to probe the hash table]:case:(0 1 2)' \
    '--sol[write the solution file]:file or folder:_files' \
    '--expert[full report, and file names that tell the settings]' \
    '--json[print one JSON object a line for each level]' \
    '--dump-levels[write the levels of the search to PREFIX_NAME.txt]:prefix:_files' \
    '--dump-position[add a line on a stored position to NAME_Dist.txt]:position:' \
    '--strict[refuse a level with an invalid character]' \
    '(- *)'{-h,--help}'[print help and end]' \
    '(- *)--version[print the version and end]' \
    '*:level:_files -g "*.xsb(-.)"'
