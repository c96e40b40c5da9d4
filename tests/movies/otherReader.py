"""Reads movies with a reader that has nothing to do with ours; prints what it finds in each."""
import sys

from yaswfp import swfparser

for path in sys.argv[1:]:
    movie = swfparser.parsefile(path)
    shown = sum(tag.name == "ShowFrame" for tag in movie.tags)
    print(path.rsplit("/", 1)[-1], movie.header.Version, movie.header.FrameCount, shown)
