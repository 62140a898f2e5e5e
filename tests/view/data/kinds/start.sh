#!/bin/sh
echo start
