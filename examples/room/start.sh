#!/bin/sh
# A program in the room: kutil-view --launch runs it when a behaviour asks to.
echo "started from the room"
