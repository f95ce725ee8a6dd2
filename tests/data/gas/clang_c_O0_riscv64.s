	.text
	.attribute	4, 16
	.attribute	5, "rv64i2p0_m2p0_a2p0_f2p0_d2p0_c2p0"
	.file	"sample.c"
	.globl	sum                             # -- Begin function sum
	.p2align	1
	.type	sum,@function
sum:                                    # @sum
.Lfunc_begin0:
	.file	0 "/build" "sample.c" md5 0xdbd1d0cf473becfd3515f0854124d705
	.loc	0 14 0                          # sample.c:14:0
	.cfi_sections .debug_frame
	.cfi_startproc
# %bb.0:
	addi	sp, sp, -48
	.cfi_def_cfa_offset 48
	sd	ra, 40(sp)                      # 8-byte Folded Spill
	sd	s0, 32(sp)                      # 8-byte Folded Spill
	.cfi_offset ra, -8
	.cfi_offset s0, -16
	addi	s0, sp, 48
	.cfi_def_cfa s0, 0
                                        # kill: def $x12 killed $x11
	sd	a0, -24(s0)
	sw	a1, -28(s0)
	li	a1, 0
.Ltmp0:
	.loc	0 15 9 prologue_end             # sample.c:15:9
	sw	a1, -32(s0)
.Ltmp1:
	.loc	0 17 9                          # sample.c:17:9
	lw	a0, -28(s0)
.Ltmp2:
	.loc	0 17 9 is_stmt 0                # sample.c:17:9
	bge	a0, a1, .LBB0_2
	j	.LBB0_1
.LBB0_1:
.Ltmp3:
	.loc	0 18 14 is_stmt 1               # sample.c:18:14
	lw	a0, -28(s0)
	.loc	0 18 9 is_stmt 0                # sample.c:18:9
	call	fail@plt
.Ltmp4:
.LBB0_2:
	.loc	0 0 9                           # sample.c:0:9
	li	a0, 0
.Ltmp5:
	.loc	0 21 14 is_stmt 1               # sample.c:21:14
	sw	a0, -36(s0)
	.loc	0 21 10 is_stmt 0               # sample.c:21:10
	j	.LBB0_3
.LBB0_3:                                # =>This Inner Loop Header: Depth=1
.Ltmp6:
	.loc	0 21 21                         # sample.c:21:21
	lw	a0, -36(s0)
	.loc	0 21 25                         # sample.c:21:25
	lw	a1, -28(s0)
.Ltmp7:
	.loc	0 21 5                          # sample.c:21:5
	bge	a0, a1, .LBB0_6
	j	.LBB0_4
.LBB0_4:                                #   in Loop: Header=BB0_3 Depth=1
.Ltmp8:
	.loc	0 22 25 is_stmt 1               # sample.c:22:25
	ld	a0, -24(s0)
	.loc	0 22 32 is_stmt 0               # sample.c:22:32
	lw	a1, -36(s0)
	.loc	0 22 25                         # sample.c:22:25
	slli	a1, a1, 2
	add	a0, a0, a1
	lw	a0, 0(a0)
	.loc	0 22 18                         # sample.c:22:18
	call	square
	mv	a1, a0
	.loc	0 22 15                         # sample.c:22:15
	lw	a0, -32(s0)
	addw	a0, a0, a1
	sw	a0, -32(s0)
	.loc	0 22 9                          # sample.c:22:9
	j	.LBB0_5
.LBB0_5:                                #   in Loop: Header=BB0_3 Depth=1
	.loc	0 21 33 is_stmt 1               # sample.c:21:33
	lw	a0, -36(s0)
	addiw	a0, a0, 1
	sw	a0, -36(s0)
	.loc	0 21 5 is_stmt 0                # sample.c:21:5
	j	.LBB0_3
.Ltmp9:
.LBB0_6:
	.loc	0 24 18 is_stmt 1               # sample.c:24:18
	lw	a0, -32(s0)
	.loc	0 24 12 is_stmt 0               # sample.c:24:12
	call	clamp
	.loc	0 24 5                          # sample.c:24:5
	ld	ra, 40(sp)                      # 8-byte Folded Reload
	ld	s0, 32(sp)                      # 8-byte Folded Reload
	addi	sp, sp, 48
	ret
.Ltmp10:
.Lfunc_end0:
	.size	sum, .Lfunc_end0-sum
	.cfi_endproc
                                        # -- End function
	.p2align	1                               # -- Begin function square
	.type	square,@function
square:                                 # @square
.Lfunc_begin1:
	.loc	0 6 0 is_stmt 1                 # sample.c:6:0
	.cfi_startproc
# %bb.0:
	addi	sp, sp, -32
	.cfi_def_cfa_offset 32
	sd	ra, 24(sp)                      # 8-byte Folded Spill
	sd	s0, 16(sp)                      # 8-byte Folded Spill
	.cfi_offset ra, -8
	.cfi_offset s0, -16
	addi	s0, sp, 32
	.cfi_def_cfa s0, 0
                                        # kill: def $x11 killed $x10
	sw	a0, -20(s0)
.Ltmp11:
	.loc	0 7 12 prologue_end             # sample.c:7:12
	lw	a0, -20(s0)
	.loc	0 7 14 is_stmt 0                # sample.c:7:14
	mulw	a0, a0, a0
	.loc	0 7 5                           # sample.c:7:5
	ld	ra, 24(sp)                      # 8-byte Folded Reload
	ld	s0, 16(sp)                      # 8-byte Folded Reload
	addi	sp, sp, 32
	ret
.Ltmp12:
.Lfunc_end1:
	.size	square, .Lfunc_end1-square
	.cfi_endproc
                                        # -- End function
	.p2align	1                               # -- Begin function clamp
	.type	clamp,@function
clamp:                                  # @clamp
.Lfunc_begin2:
	.file	1 "." "limits.h" md5 0xf86e1f8ae4a8f2b6750b5285ae0b5e88
	.loc	1 3 0 is_stmt 1                 # ./limits.h:3:0
	.cfi_startproc
# %bb.0:
	addi	sp, sp, -32
	.cfi_def_cfa_offset 32
	sd	ra, 24(sp)                      # 8-byte Folded Spill
	sd	s0, 16(sp)                      # 8-byte Folded Spill
	.cfi_offset ra, -8
	.cfi_offset s0, -16
	addi	s0, sp, 32
	.cfi_def_cfa s0, 0
                                        # kill: def $x11 killed $x10
	sw	a0, -24(s0)
.Ltmp13:
	.loc	1 4 9 prologue_end              # ./limits.h:4:9
	lw	a0, -24(s0)
	li	a1, 256
.Ltmp14:
	.loc	1 4 9 is_stmt 0                 # ./limits.h:4:9
	blt	a0, a1, .LBB2_2
	j	.LBB2_1
.LBB2_1:
	.loc	1 0 9                           # ./limits.h:0:9
	li	a0, 255
.Ltmp15:
	.loc	1 5 9 is_stmt 1                 # ./limits.h:5:9
	sw	a0, -20(s0)
	j	.LBB2_3
.Ltmp16:
.LBB2_2:
	.loc	1 6 12                          # ./limits.h:6:12
	lw	a0, -24(s0)
	.loc	1 6 5 is_stmt 0                 # ./limits.h:6:5
	sw	a0, -20(s0)
	j	.LBB2_3
.LBB2_3:
	.loc	1 7 1 is_stmt 1                 # ./limits.h:7:1
	lw	a0, -20(s0)
	ld	ra, 24(sp)                      # 8-byte Folded Reload
	ld	s0, 16(sp)                      # 8-byte Folded Reload
	addi	sp, sp, 32
	ret
.Ltmp17:
.Lfunc_end2:
	.size	clamp, .Lfunc_end2-clamp
	.cfi_endproc
                                        # -- End function
	.globl	first                           # -- Begin function first
	.p2align	1
	.type	first,@function
first:                                  # @first
.Lfunc_begin3:
	.loc	0 27 0                          # sample.c:27:0
	.cfi_startproc
# %bb.0:
	addi	sp, sp, -16
	.cfi_def_cfa_offset 16
	sd	ra, 8(sp)                       # 8-byte Folded Spill
	sd	s0, 0(sp)                       # 8-byte Folded Spill
	.cfi_offset ra, -8
	.cfi_offset s0, -16
	addi	s0, sp, 16
	.cfi_def_cfa s0, 0
	li	a0, 1
.Ltmp18:
	.loc	0 27 19 prologue_end            # sample.c:27:19
	ld	ra, 8(sp)                       # 8-byte Folded Reload
	ld	s0, 0(sp)                       # 8-byte Folded Reload
	addi	sp, sp, 16
	ret
.Ltmp19:
.Lfunc_end3:
	.size	first, .Lfunc_end3-first
	.cfi_endproc
                                        # -- End function
	.globl	second                          # -- Begin function second
	.p2align	1
	.type	second,@function
second:                                 # @second
.Lfunc_begin4:
	.loc	0 27 0                          # sample.c:27:0
	.cfi_startproc
# %bb.0:
	addi	sp, sp, -16
	.cfi_def_cfa_offset 16
	sd	ra, 8(sp)                       # 8-byte Folded Spill
	sd	s0, 0(sp)                       # 8-byte Folded Spill
	.cfi_offset ra, -8
	.cfi_offset s0, -16
	addi	s0, sp, 16
	.cfi_def_cfa s0, 0
	li	a0, 2
.Ltmp20:
	.loc	0 27 50 prologue_end            # sample.c:27:50
	ld	ra, 8(sp)                       # 8-byte Folded Reload
	ld	s0, 0(sp)                       # 8-byte Folded Reload
	addi	sp, sp, 16
	ret
.Ltmp21:
.Lfunc_end4:
	.size	second, .Lfunc_end4-second
	.cfi_endproc
                                        # -- End function
	.globl	widen                           # -- Begin function widen
	.p2align	1
	.type	widen,@function
widen:                                  # @widen
.Lfunc_begin5:
	.loc	0 32 0                          # sample.c:32:0
	.cfi_startproc
# %bb.0:
	addi	sp, sp, -32
	.cfi_def_cfa_offset 32
	sd	ra, 24(sp)                      # 8-byte Folded Spill
	sd	s0, 16(sp)                      # 8-byte Folded Spill
	.cfi_offset ra, -8
	.cfi_offset s0, -16
	addi	s0, sp, 32
	.cfi_def_cfa s0, 0
                                        # kill: def $x11 killed $x10
	sw	a0, -20(s0)
.Ltmp22:
	.loc	0 34 12 prologue_end            # sample.c:34:12
	lw	a0, -20(s0)
	.loc	0 34 14 is_stmt 0               # sample.c:34:14
	addiw	a0, a0, 1
	.loc	0 34 5                          # sample.c:34:5
	ld	ra, 24(sp)                      # 8-byte Folded Reload
	ld	s0, 16(sp)                      # 8-byte Folded Reload
	addi	sp, sp, 32
	ret
.Ltmp23:
.Lfunc_end5:
	.size	widen, .Lfunc_end5-widen
	.cfi_endproc
                                        # -- End function
