#!/bin/bash
# SPDX-License-Identifier: GPL-2.0-or-later
# Makes the sample recordings that lie beside this script.
#
# This script owns every audio file in its folder: what it makes is overwritten
# on each run, and no sample is ever edited by hand. README.md beside it tells
# what each file is for; whoever changes a recipe here updates that table.
#
# Everything heard is synthesised (speech and tones), so that the samples carry
# no rights but the project's own.
#
# Usage: make_samples.sh [FOLDER]      FOLDER defaults to the script's own.
# Needs the packages of the section [samples] of packages.txt.

set -euo pipefail
export LC_ALL=C

here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
out=$(cd -- "${1:-$here}" && pwd)

for tool in espeak-ng sox lame twolame ffmpeg; do
  command -v "$tool" >/dev/null || { echo "make_samples: $tool is missing" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
cd -- "$work"

# sox seeds dither and noise from the clock unless told -R; the noise below and
# the encoders' input must be the same on every run.
sx() { sox -R "$@"; }

# Every piece is numbered, so that a recording is the pieces in the order in
# which its recipe called for them.
begin() { # RATE CHANNELS
  rate=$1 channels=$2 count=0 pieces=()
}

next_piece() {
  count=$((count + 1))
  piece=$(printf 'piece%02d.wav' "$count")
  pieces+=("$piece")
}

# say VOICE SPEED PAN TEXT. PAN is the left channel's share: 1 left only, 0.5
# centre; one channel takes -. Stereo pieces differ between the channels, so that a joint stereo
# encoder has a reason to switch modes and a swapped channel can be heard.
say() {
  next_piece
  espeak-ng -v "$1" -s "$2" -w speech.wav "$4"
  # The synthesiser leaves a tail of its own; the pauses are to be ours alone.
  # A few milliseconds of fade keep the joint with the silence free of clicks,
  # and gain -6 leaves headroom for what lossy coding adds to the peaks.
  # Both ends are treated as beginnings, one of them reversed, because the
  # length is unknown while the tail is being taken off.
  local edge=(silence 1 0.01 0.1% fade t 0.005 reverse)
  local shaped=("${edge[@]}" "${edge[@]}" gain -n -6 rate "$rate")
  if [ "$channels" -eq 2 ]; then
    local right
    right=$(awk "BEGIN { print 1 - $3 }")
    sx speech.wav -b 16 -r "$rate" "$piece" "${shaped[@]}" remix "1v$3" "1v$right" gain 4
  else
    sx speech.wav -b 16 -r "$rate" "$piece" "${shaped[@]}"
  fi
}

# Digital silence: every sample is zero.
pause() { # SECONDS
  next_piece
  sx -n -b 16 -r "$rate" -c "$channels" "$piece" trim 0 "$1"
}

# Near silence: the noise of a quiet room, at about the level given. A search
# for pauses that only accepts zero samples does not find these.
room() { # SECONDS LEVEL_DB
  next_piece
  sx -n -b 16 -r "$rate" -c "$channels" "$piece" synth "$1" pinknoise gain -n "$2"
}

tone() { # SECONDS HERTZ [HERTZ_RIGHT]
  next_piece
  local waves=(sine "$2")
  if [ "$channels" -eq 2 ]; then waves+=(sine "${3:-$2}"); fi
  sx -n -b 16 -r "$rate" -c "$channels" "$piece" synth "$1" "${waves[@]}" \
    fade t 0.02 reverse fade t 0.02 gain -n -12
}

finish() { # WAV
  sx "${pieces[@]}" -b 16 "$1"
  rm -f -- "${pieces[@]}" speech.wav
}

# --- cbr128.mp3: both tags, Info header, a length frame ----------------------

begin 44100 2
tone 1.0 440
pause 1.0
say en-us 160 0.5 "This recording was made to be cut. Each sentence stands on its own, and each pause between two sentences is a good place for a cut."
pause 1.5
say en-gb 155 0.8 "A cut that falls into a pause is never heard. A cut that falls into a word is heard by everyone."
room 2.0 -66
say en-us 160 0.2 "Nothing is encoded again when a piece is taken out. The frames that stay are copied as they are."
pause 3.0
tone 1.5 523 659
pause 0.7
say en-gb 155 0.5 "Here the recording ends."
pause 0.8
finish cbr128.wav
# The encoder writes the length frame (TLEN) by itself, from the length of its
# input in whole milliseconds, and ignores one given with --tv.
# No comment frame: the encoder leaves the byte order mark out of its empty
# description, and a sample should not be faulty by accident.
lame --quiet -b 128 --cbr -m j -q 2 \
  --tt "Where to cut" --ta "Corvelin samples" --tl "Sample recordings" \
  --ty 2024 --add-id3v2 \
  cbr128.wav cbr128.mp3

# --- vbr.mp3: Xing header, no tags --------------------------------------------

begin 44100 2
say en-us 150 0.3 "When the rate varies, a frame with silence is small and a frame with a loud chord is large."
pause 2.5
tone 2.0 220 330
room 1.2 -60
say en-gb 165 0.7 "The place of a moment in the file cannot be computed from the rate alone. Either someone has written a table, or the frames have to be counted one by one."
pause 3.0
say en-us 150 0.5 "After a cut the table is wrong, the number of frames is wrong, and the number of bytes is wrong. All three must be written anew."
room 2.0 -70
tone 1.0 880 990
pause 0.7
say en-gb 165 0.4 "So far three pauses were silent and two were merely quiet. Whoever looks for pauses should find them all."
pause 1.5
say en-us 150 0.6 "That was the last sentence."
room 1.0 -66
finish vbr.wav
lame --quiet -V 4 -m s -q 2 vbr.wav vbr.mp3

# --- mono_mpeg2.mp3: low sampling rate, one channel, no header frame ----------

begin 22050 1
say en-us 155 - "A voice needs no more than one channel and half the usual sampling rate."
pause 1.0
say en-gb 150 - "There is no header frame in this file, so the first frame is already sound."
room 1.5 -60
tone 0.8 600
pause 2.0
say en-us 155 - "Count the frames, and you know how long it is. Cut one away, and it is shorter by twenty six milliseconds."
pause 0.7
finish mono_mpeg2.wav
lame --quiet -b 48 --cbr -m m -q 2 -t mono_mpeg2.wav mono_mpeg2.mp3

# --- crc.mp3: a check word in every frame --------------------------------------

begin 48000 2
say en-gb 155 0.6 "Every frame of this recording carries a check word. It must still be right after the cut."
pause 1.5
tone 1.0 1000 750
pause 0.8
say en-us 160 0.3 "A frame that has been copied whole keeps its check word."
room 0.7 -63
finish crc.wav
# Left alone, the encoder would lower the sampling rate to suit this bit rate.
lame --quiet -b 96 --cbr -m s -q 2 -p --resample 48 crc.wav crc.mp3

# --- layer2.mp2: frames that do not lean on each other -------------------------

begin 48000 2
say en-us 155 0.4 "In this layer no frame borrows from the frame before it. A cut is clean at every border."
pause 1.2
tone 1.0 392 494
room 1.0 -63
say en-gb 155 0.7 "That makes it the easiest recording of them all."
pause 0.7
finish layer2.wav
twolame --quiet -b 128 -m stereo layer2.wav layer2.mp2

# --- speech.aac: self-framing stream, one raw block per frame -------------------

begin 44100 1
say en-gb 155 - "This recording has frames of another kind. Each begins with a header of its own and can be copied without the rest."
pause 2.0
tone 1.0 700
pause 0.7
say en-us 155 - "A speaker breathes, a speaker waits, and in the waiting there is room for a cut."
room 1.5 -63
say en-gb 150 - "Now listen to the silence that follows."
pause 1.5
finish voice.wav
# bitexact keeps the encoder's version out of the stream, and one thread keeps
# the order of its work fixed.
ffmpeg -nostdin -v error -y -threads 1 -i voice.wav \
  -c:a aac -profile:a aac_low -b:a 48k -ac 1 -threads 1 \
  -flags:a +bitexact -fflags +bitexact -map_metadata -1 -f adts speech.aac

# --- stereo_low.aac: two channels at half the usual sampling rate ----------------

begin 22050 2
tone 0.8 311 415
pause 0.7
say en-gb 160 0.6 "Low rates are doubled."
finish stereo_low.wav
# Without noise substitution, which every decoder fills with a noise of its own.
ffmpeg -nostdin -v error -y -threads 1 -i stereo_low.wav \
  -c:a aac -profile:a aac_low -aac_pns 0 -b:a 48k -threads 1 \
  -flags:a +bitexact -fflags +bitexact -map_metadata -1 -f adts stereo_low.aac

# Only a complete set replaces the old one.
for file in cbr128.mp3 vbr.mp3 mono_mpeg2.mp3 crc.mp3 layer2.mp2 speech.aac stereo_low.aac; do
  install -m 644 -- "$file" "$out/$file"
done
